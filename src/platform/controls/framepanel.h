// SPDX-License-Identifier: MIT
#pragma once

#include <QRect>
#include <QWidget>

#include <vector>

namespace sixtrace {

/// A frame around a group of controls: a rounded line with a title in a gap of the line. It fills nothing, so that what
/// lies below it stays visible.
class FramePanel : public QWidget {
    Q_OBJECT
    Q_PROPERTY(QString caption READ caption WRITE setCaption)
public:
    FramePanel(const QString& caption, QWidget* parent);

    [[nodiscard]] QString caption() const { return m_caption; }
    void setCaption(const QString& caption);
    /// Adds a thin line inside the frame that separates controls.
    void addRule(const QRect& rule);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QString m_caption;
    std::vector<QRect> m_rules;
};

} // namespace sixtrace
