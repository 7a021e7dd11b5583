// SPDX-License-Identifier: MIT
#pragma once

#include <QLabel>

namespace sixtrace {

/// A label of one line. A text that is too wide is painted smaller, down to 9 px, and is then the tool tip too. Blanks
/// at the ends of the text are not painted.
class ReadoutLabel : public QLabel {
    Q_OBJECT
    Q_PROPERTY(QString caption READ caption WRITE setCaption)
public:
    explicit ReadoutLabel(QWidget* parent);

    [[nodiscard]] QString caption() const { return text(); }
    void setCaption(const QString& caption);
    /// The size at which the present text is painted, pixels.
    [[nodiscard]] int paintedPixels() const { return m_pixels; }
    /// Sets the size at which a text that fits is painted, pixels.
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

/// A label whose caption is two words with several blanks between them. The first word is painted at the left edge, the
/// second above the arrows beside a list.
class TwoWordLabel : public QLabel {
public:
    explicit TwoWordLabel(QWidget* parent);

protected:
    void paintEvent(QPaintEvent* event) override;
};

/// A label that shows a path. A path that is too long is shortened in the middle when it is painted; caption and tool
/// tip have all of it. A small mark before the path says that something is wrong with the file.
class PathLabel : public QLabel {
    Q_OBJECT
public:
    explicit PathLabel(QWidget* parent);
    /// Sets the path and takes the mark away.
    void setCaption(const QString& caption);
    /// Sets a sentence that the tool tip shows below the path.
    void setNote(const QString& note);
    /// Sets the mark, and what is wrong with the file, which the tool tip shows above the path. An empty text takes the
    /// mark away.
    void setFault(const QString& fault);
    [[nodiscard]] bool hasFault() const { return !m_fault.isEmpty(); }

Q_SIGNALS:
    /// A path has been set. It may be the same as before.
    void captionSet(const QString& caption);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    void showToolTip();

    QString m_fault;
    QString m_note;
};

/// The band along the lower edge of the main window, under the paths.
class StatusBand : public QWidget {
public:
    explicit StatusBand(QWidget* parent);

protected:
    void paintEvent(QPaintEvent* event) override;
};

} // namespace sixtrace
