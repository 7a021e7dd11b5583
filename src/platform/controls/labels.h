// SPDX-License-Identifier: MIT
#pragma once

#include <QLabel>

namespace sixtrace {

/// A one-line label that is never clipped: a text too wide for it is painted smaller, pixel by pixel down to 9 px, and
/// then stands as tool tip too. Blanks at the ends belong to the text but are not painted.
class ReadoutLabel : public QLabel {
    Q_OBJECT
    Q_PROPERTY(QString caption READ caption WRITE setCaption)
public:
    explicit ReadoutLabel(QWidget* parent);

    [[nodiscard]] QString caption() const { return text(); }
    void setCaption(const QString& caption);
    /// The pixel size at which the present text is painted.
    [[nodiscard]] int paintedPixels() const { return m_pixels; }
    /// The size of a text that fits; smaller ones follow from it.
    void setFullPixels(int pixels);

Q_SIGNALS:
    void captionChanged();

protected:
    void paintEvent(QPaintEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    void fit();

    int m_fullPixels;
    int m_pixels;
};

/// A label whose caption holds two words with a run of blanks between. The caption stays as it is; the first word is
/// painted at the left edge, the second centred above the arrows beside a list.
class TwoWordLabel : public QLabel {
public:
    explicit TwoWordLabel(QWidget* parent);

protected:
    void paintEvent(QPaintEvent* event) override;
};

/// A label that shows a path: elided in its middle when painted, complete as caption and tool tip. A small mark before
/// it says that there is something to know about the file.
class PathLabel : public QLabel {
    Q_OBJECT
public:
    explicit PathLabel(QWidget* parent);
    /// Takes a mark away.
    void setCaption(const QString& caption);
    /// A sentence that the tool tip shows below the caption.
    void setNote(const QString& note);
    /// What is wrong with the file: it stands in the tool tip, above the path. Empty takes the mark away.
    void setFault(const QString& fault);
    [[nodiscard]] bool hasFault() const { return !m_fault.isEmpty(); }

Q_SIGNALS:
    /// A path has been set, be it the one that was there.
    void captionSet(const QString& caption);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    void showToolTip();

    QString m_fault;
    QString m_note;
};

/// The band at the foot of the main window, on which the path lies.
class StatusBand : public QWidget {
public:
    explicit StatusBand(QWidget* parent);

protected:
    void paintEvent(QPaintEvent* event) override;
};

} // namespace sixtrace
