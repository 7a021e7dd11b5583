// SPDX-License-Identifier: MIT
#pragma once

#include "platform/printing/picturepage.h"
#include "platform/printing/printer.h"

#include <QImage>

#include <vector>

namespace sixtrace::test {

/// One thing drawn on a page, in twips.
struct DrawnItem {
    enum class Kind { Line, Text, Picture };
    Kind kind = Kind::Line;
    QRectF place; ///< of a line: one end, and width and height to the other end; of a text: left edge and base line
    QString text;
    Colour colour = 0;
    DrawStyle style = DrawStyle::Solid;
    QImage picture;
};

/// A printer or a picture of a sheet that records what is drawn on it. Nothing reaches the device.
template<typename Page>
class Recording : public Page {
public:
    using Page::Page;

    std::vector<DrawnItem> drawn;

    [[nodiscard]] std::vector<DrawnItem> of(DrawnItem::Kind kind) const {
        std::vector<DrawnItem> items;
        std::copy_if(drawn.begin(), drawn.end(), std::back_inserter(items),
                     [kind](const DrawnItem& item) { return item.kind == kind; });
        return items;
    }
    /// The picture of the frame, which is drawn last.
    [[nodiscard]] const DrawnItem& frame() const { return drawn.back(); }

protected:
    void drawLine(double x1, double y1, double x2, double y2) override {
        drawn.push_back({DrawnItem::Kind::Line, {x1, y1, x2 - x1, y2 - y1}, {}, this->ForeColor, this->DrawStyle, {}});
    }
    void drawText(double left, double baseline, const QString& text, const QFont&) override {
        drawn.push_back({DrawnItem::Kind::Text, {left, baseline, 0, 0}, text, this->ForeColor, this->DrawStyle, {}});
    }
    void drawPicture(const QImage& picture, const QRectF& place) override {
        drawn.push_back({DrawnItem::Kind::Picture, place, {}, this->ForeColor, this->DrawStyle, picture});
    }
};

using RecordingPrinter = Recording<Printer>;
using RecordingSheet = Recording<PicturePage>;

} // namespace sixtrace::test
