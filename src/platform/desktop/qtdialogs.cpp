// SPDX-License-Identifier: MIT
#include "platform/desktop/qtdialogs.h"

#include "platform/controls/look.h"

#include <QApplication>
#include <QColorDialog>
#include <QFileDialog>
#include <QFileInfo>
#include <QInputDialog>
#include <QLibraryInfo>
#include <QMessageBox>
#include <QTranslator>

namespace sixtrace {

namespace {

const QString kToolkitChinese = QStringLiteral("toolkit's Chinese"); ///< object name of the translator

QWidget* owner() {
    return QApplication::activeWindow();
}

QMessageBox::Icon boxIcon(MessageIcon icon) {
    switch (icon) {
    case MessageIcon::Plain:
        return QMessageBox::NoIcon;
    case MessageIcon::Information:
        return QMessageBox::Information;
    case MessageIcon::Exclamation:
        return QMessageBox::Warning;
    case MessageIcon::Critical:
        return QMessageBox::Critical;
    }
    return QMessageBox::NoIcon;
}

QString boxTitle(const QString& title) {
    return title.isEmpty() ? QStringLiteral("Sixtrace") : title;
}

std::optional<FileChoice> choose(const FileRequest& request, QFileDialog::AcceptMode mode) {
    QFileDialog dialog(owner());
    dialog.setAcceptMode(mode);
    dialog.setFileMode(QFileDialog::AnyFile);
    dialog.setOption(QFileDialog::DontConfirmOverwrite);
    const QStringList filters = nameFilters(request.filter);
    dialog.setNameFilters(filters);
    if (request.filterIndex >= 1 && request.filterIndex <= filters.size()) {
        dialog.selectNameFilter(filters.at(request.filterIndex - 1));
    }
    const QFileInfo preset(request.fileName);
    const bool namesFolder = request.fileName.contains(QLatin1Char('/'));
    const QString folder = namesFolder ? preset.path() : request.initialFolder;
    if (!folder.isEmpty()) {
        dialog.setDirectory(folder);
    }
    // A pattern in the preset name only gives the folder: the filters already choose the files.
    if (!preset.fileName().contains(QLatin1Char('*'))) {
        dialog.selectFile(preset.fileName());
    }
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty()) {
        return std::nullopt;
    }
    return FileChoice{dialog.selectedFiles().constFirst(),
                      static_cast<int>(filters.indexOf(dialog.selectedNameFilter())) + 1};
}

} // namespace

QStringList nameFilters(const QString& pairs) {
    const QStringList parts = pairs.split(QLatin1Char('|'));
    QStringList filters;
    for (qsizetype i = 0; i + 1 < parts.size(); i += 2) {
        QString label = parts.at(i);
        // The toolkit shows the pattern after the label. A label that holds the pattern would show it twice.
        const qsizetype bracket = label.lastIndexOf(QLatin1Char('('));
        if (bracket > 0 && label.endsWith(QLatin1Char(')'))) {
            label = label.left(bracket).trimmed();
        }
        QString patterns = parts.at(i + 1);
        patterns.replace(QLatin1Char(';'), QLatin1Char(' '));
        filters.append(
            QStringLiteral("%1 (%2)").arg(label, patterns == QStringLiteral("*.*") ? QStringLiteral("*") : patterns));
    }
    return filters;
}

namespace {

QTranslator* chineseOfToolkit() {
    return QCoreApplication::instance()->findChild<QTranslator*>(kToolkitChinese, Qt::FindDirectChildrenOnly);
}

} // namespace

void showToolkitInChinese() {
    if (chineseOfToolkit() != nullptr) {
        return;
    }
    auto* chinese = new QTranslator(QCoreApplication::instance());
    chinese->setObjectName(kToolkitChinese);
    if (chinese->load(QStringLiteral("qtbase_zh_CN"), QLibraryInfo::path(QLibraryInfo::TranslationsPath))) {
        QCoreApplication::installTranslator(chinese);
    }
}

void showToolkitInEnglish() {
    delete chineseOfToolkit(); // without a translation the toolkit is English
}

std::optional<FileChoice> QtDialogs::ShowOpen(const FileRequest& request) {
    return choose(request, QFileDialog::AcceptOpen);
}

std::optional<FileChoice> QtDialogs::ShowSave(const FileRequest& request) {
    return choose(request, QFileDialog::AcceptSave);
}

std::optional<Colour> QtDialogs::ShowColor(Colour start, const QString& title) {
    const QColor chosen = QColorDialog::getColor(toQColor(start), owner(), title);
    return chosen.isValid() ? std::optional(toColour(chosen)) : std::nullopt;
}

void QtDialogs::message(const QString& text, MessageIcon icon, const QString& title) {
    QMessageBox box(boxIcon(icon), boxTitle(title), text, QMessageBox::Ok, owner());
    box.setTextFormat(Qt::PlainText);
    box.exec();
}

Answer QtDialogs::question(const QString& text, MessageIcon icon, const QString& title) {
    QMessageBox box(boxIcon(icon), boxTitle(title), text, QMessageBox::Yes | QMessageBox::No, owner());
    box.setTextFormat(Qt::PlainText);
    return box.exec() == QMessageBox::Yes ? Answer::Yes : Answer::No;
}

std::optional<QString> QtDialogs::input(const QString& prompt, const QString& title, const QString& preset) {
    bool accepted = false;
    const QString text = QInputDialog::getText(owner(), boxTitle(title), prompt, QLineEdit::Normal, preset, &accepted);
    return accepted ? std::optional(text) : std::nullopt;
}

} // namespace sixtrace
