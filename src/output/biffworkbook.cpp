// SPDX-License-Identifier: MIT
#include "output/biffworkbook.h"

#include "output/compoundfile.h"
#include "output/littleendian.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <optional>

namespace sixtrace {

namespace {

/// Record types.
enum Record : std::uint16_t {
    Eof = 0x000A,
    Font = 0x0031,
    Window1 = 0x003D,
    CodePage = 0x0042,
    BoundSheet = 0x0085,
    ExtendedFormat = 0x00E0,
    SharedTexts = 0x00FC,
    SharedText = 0x00FD,
    Dimensions = 0x0200,
    Number = 0x0203,
    Window2 = 0x023E,
    ShortNumber = 0x027E,
    Style = 0x0293,
    Bof = 0x0809,
};

constexpr std::uint16_t kGlobals = 0x0005;
constexpr std::uint16_t kSheet = 0x0010;
constexpr int kStyleFormats = 15;
constexpr std::uint16_t kCellFormat = kStyleFormats; ///< the one format of cells, which follows those of styles
/// Longest text of a cell here. Seven of them fit one record of shared texts, which may hold 8224 bytes.
constexpr qsizetype kLongestText = 255;

void begin(QByteArray& bytes, Record record, int size) {
    append16(bytes, record);
    append16(bytes, static_cast<std::uint16_t>(size));
}

void appendRecord(QByteArray& bytes, Record record, const QByteArray& content) {
    begin(bytes, record, static_cast<int>(content.size()));
    bytes.append(content);
}

void appendBof(QByteArray& bytes, std::uint16_t kind) {
    begin(bytes, Bof, 16);
    append16(bytes, 0x0600); // BIFF8
    append16(bytes, kind);
    append16(bytes, 0x0DBB); // build and
    append16(bytes, 0x07CC); // year of the format's first program
    append32(bytes, 0x00000041);
    append32(bytes, 0x00000006);
}

/// Appends a text with one byte for each character when that is enough for all of them, otherwise with two.
void appendCharacters(QByteArray& bytes, const QString& text) {
    const bool wide = std::any_of(text.begin(), text.end(), [](QChar c) { return c.unicode() > 0xFF; });
    append8(bytes, wide ? 1 : 0);
    for (const QChar c : text) {
        if (wide) {
            append16(bytes, c.unicode());
        } else {
            append8(bytes, static_cast<std::uint8_t>(c.unicode()));
        }
    }
}

void appendFont(QByteArray& bytes) {
    QByteArray font;
    append16(font, 200); // twentieths of a point
    append16(font, 0);
    append16(font, 0x7FFF); // the window's text colour
    append16(font, 400);
    append16(font, 0);
    append32(font, 0);
    const QString name = QStringLiteral("Arial");
    append8(font, static_cast<std::uint8_t>(name.size()));
    appendCharacters(font, name);
    appendRecord(bytes, Font, font);
}

void appendFormat(QByteArray& bytes, std::uint16_t kindAndParent, std::uint8_t ownAttributes) {
    begin(bytes, ExtendedFormat, 20);
    append16(bytes, 0); // font
    append16(bytes, 0); // number format "General"
    append16(bytes, kindAndParent);
    append8(bytes, 0x20); // at the bottom of the cell
    append8(bytes, 0);
    append8(bytes, 0);
    append8(bytes, ownAttributes);
    append32(bytes, 0); // no borders
    append32(bytes, 0);
    append16(bytes, 0x20C0); // no pattern
}

void appendFormats(QByteArray& bytes) {
    constexpr std::uint16_t kStyle = 0xFFF5;
    constexpr std::uint16_t kCell = 0x0001;
    // Readers expect the formats of the built-in styles in front, even where no cell uses them.
    appendFormat(bytes, kStyle, 0);
    for (int i = 1; i < kStyleFormats; ++i) {
        appendFormat(bytes, kStyle, 0xF4);
    }
    appendFormat(bytes, kCell, 0);
    begin(bytes, Style, 4);
    append16(bytes, 0x8000); // format 0 is that of the built-in style
    append8(bytes, 0);       // "Normal"
    append8(bytes, 0xFF);
}

void appendWindow1(QByteArray& bytes) {
    begin(bytes, Window1, 18);
    // Place and size, scroll bars and tabs shown, the first sheet active and selected, width of the tab bar.
    constexpr std::array<std::uint16_t, 9> kWords{0x0168, 0x010E, 0x3A5C, 0x23BE, 0x0038, 0, 0, 1, 600};
    for (const std::uint16_t word : kWords) {
        append16(bytes, word);
    }
}

void appendSharedTexts(QByteArray& bytes, const QStringList& texts) {
    QByteArray shared;
    append32(shared, static_cast<std::uint32_t>(texts.size())); // uses
    append32(shared, static_cast<std::uint32_t>(texts.size()));
    for (const QString& text : texts) {
        append16(shared, static_cast<std::uint16_t>(text.size()));
        appendCharacters(shared, text);
    }
    appendRecord(bytes, SharedTexts, shared);
}

/// Everything of the workbook but its sheet, which begins at byte `sheetAt` of the stream.
QByteArray globals(const QStringList& texts, std::uint32_t sheetAt) {
    QByteArray bytes;
    appendBof(bytes, kGlobals);
    begin(bytes, CodePage, 2);
    append16(bytes, 1200); // two-byte characters
    appendWindow1(bytes);
    for (int i = 0; i < 4; ++i) {
        appendFont(bytes); // readers count on four
    }
    appendFormats(bytes);
    QByteArray sheet;
    append32(sheet, sheetAt);
    append16(sheet, 0);
    const QString name = QStringLiteral("Sheet1");
    append8(sheet, static_cast<std::uint8_t>(name.size()));
    appendCharacters(sheet, name);
    appendRecord(bytes, BoundSheet, sheet);
    appendSharedTexts(bytes, texts);
    begin(bytes, Eof, 0);
    return bytes;
}

/// The four-byte form of a number. It exists for whole numbers of 30 bits and for hundredths of such numbers.
std::optional<std::uint32_t> shortNumber(double value) {
    constexpr double kLimit = 1 << 29;
    if (value >= -kLimit && value < kLimit && value == std::trunc(value)) {
        return (static_cast<std::uint32_t>(static_cast<std::int32_t>(value)) << 2U) | 2U;
    }
    const double hundredfold = std::round(value * 100);
    if (hundredfold >= -kLimit && hundredfold < kLimit && hundredfold / 100 == value) {
        return (static_cast<std::uint32_t>(static_cast<std::int32_t>(hundredfold)) << 2U) | 3U;
    }
    return std::nullopt;
}

void appendCell(QByteArray& bytes, Record record, int size, int row, int col) {
    begin(bytes, record, size);
    append16(bytes, static_cast<std::uint16_t>(row));
    append16(bytes, static_cast<std::uint16_t>(col));
    append16(bytes, kCellFormat);
}

} // namespace

void BiffWorkbook::notePlace(int row, int col) {
    m_rows = std::max(m_rows, row + 1);
    m_cols = std::max(m_cols, col + 1);
}

void BiffWorkbook::text(int row, int col, const QString& text) {
    if (text.isEmpty()) {
        return;
    }
    notePlace(row, col);
    appendCell(m_cells, SharedText, 10, row, col);
    append32(m_cells, static_cast<std::uint32_t>(m_texts.size()));
    m_texts.append(text.left(kLongestText));
}

void BiffWorkbook::number(int row, int col, double value) {
    notePlace(row, col);
    if (const auto brief = shortNumber(value)) {
        appendCell(m_cells, ShortNumber, 10, row, col);
        append32(m_cells, *brief);
    } else {
        appendCell(m_cells, Number, 14, row, col);
        appendLittleEndian(m_cells, value);
    }
}

Result<QByteArray> BiffWorkbook::file() const {
    QByteArray stream = globals(m_texts, 0);
    stream = globals(m_texts, static_cast<std::uint32_t>(stream.size())); // the length does not depend on the place
    appendBof(stream, kSheet);
    begin(stream, Dimensions, 14);
    append32(stream, 0);
    append32(stream, static_cast<std::uint32_t>(m_rows));
    append16(stream, 0);
    append16(stream, static_cast<std::uint16_t>(m_cols));
    append16(stream, 0);
    stream.append(m_cells);
    begin(stream, Window2, 18);
    append16(stream, 0x06B6); // grid, heads and zeros shown, the selected sheet
    append32(stream, 0);      // first row and column in view
    append32(stream, 0x40);   // colour of the grid
    append32(stream, 0);
    append32(stream, 0);
    begin(stream, Eof, 0);
    return compoundFile(QStringLiteral("Workbook"), stream);
}

} // namespace sixtrace
