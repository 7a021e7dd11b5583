// SPDX-License-Identifier: MIT
#pragma once

#include <QRect>
#include <QWidget>

#include <vector>

namespace sixtrace {

/// A titled frame: a rounded line with the title in a gap of it, nothing filled, so that what lies below shows
/// through. It only groups; placing the controls inside is the window's.
class FramePanel : public QWidget {
    Q_OBJECT
    Q_PROPERTY(QString caption READ caption WRITE setCaption)
public:
    FramePanel(const QString& caption, QWidget* parent);

    [[nodiscard]] QString caption() const { return m_caption; }
    void setCaption(const QString& caption);
    /// A thin line inside the frame that parts groups of controls.
    void addRule(const QRect& rule);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QString m_caption;
    std::vector<QRect> m_rules;
};

} // namespace sixtrace
