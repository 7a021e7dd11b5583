// SPDX-License-Identifier: MIT
#pragma once

#include "capture/publicm.h"

#include <QObject>

namespace sixtrace {

class MarkerLabel;
class MarkerStrip;

/// Arrow keys for the zero markers: they move the marker that has the focus by one screen unit, by a press, a move and
/// a release of its own handlers, so that trace, bar and readouts follow as they do to the mouse. A key does not move a
/// marker beyond the places where its stand-by label would replace it: the focus would be lost with it. Owned by the
/// window.
class MarkerKeys : public QObject {
public:
    MarkerKeys(MarkerStrip& strip, const PerChannel<MarkerLabel*>& image1, QObject* parent);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void step(int channel, int units);

    MarkerStrip& m_strip;
    PerChannel<MarkerLabel*> m_image1;
};

} // namespace sixtrace
