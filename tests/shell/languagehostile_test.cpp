// SPDX-License-Identifier: MIT
// Files that are not language files: captions stay, and the program does not fail.
#include "shell/capturewindow.h"

#include "capture/applylanguage.h"
#include "capture/mdllan.h"
#include "platform/controls/captions.h"
#include "platform/controls/framepanel.h"
#include "support/sourcefolder.h"
#include "support/strings.h"

#include <QRandomGenerator>

#include <map>

namespace sixtrace::test {
namespace {

using Captions = std::map<QString, QString>;

class HostileLanguage : public CaptureWindow {
protected:
    [[nodiscard]] Captions captions() const {
        Captions result{{u"(form)"_s, form->windowTitle()}};
        for (const QObject* control : form->findChildren<QObject*>()) {
            const CaptionKind kind = captionKind(*control);
            if (control->objectName().isEmpty() || kind == CaptionKind::None) {
                continue;
            }
            if (kind == CaptionKind::ComboBox) {
                const auto* combo = qobject_cast<const QComboBox*>(control);
                for (int entry = 0; entry < combo->count(); ++entry) {
                    result[control->objectName() + QString::number(entry)] = combo->itemText(entry);
                }
            } else {
                result[control->objectName()] = captionOf(*control);
            }
        }
        return result;
    }
    void restore(const Captions& known) const {
        form->setWindowTitle(known.at(u"(form)"_s));
        for (QObject* control : form->findChildren<QObject*>()) {
            if (auto* combo = qobject_cast<QComboBox*>(control)) {
                for (int entry = 0; entry < combo->count(); ++entry) {
                    combo->setItemText(entry, known.at(control->objectName() + QString::number(entry)));
                }
            } else if (const auto caption = known.find(control->objectName()); caption != known.end()) {
                setCaptionOf(*control, caption->second);
            }
        }
    }
    [[nodiscard]] static QByteArray englishFile() {
        QFile file(QStringLiteral(SIXTRACE_SOURCE_DIR "/lang/English.Lan"));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
    /// Applies a file as a switch of the language does, but without the texts that the program composes itself.
    void apply(const QByteArray& bytes) {
        write(u"English.Lan"_s, bytes);
        SetLanFile(*model, 1);
        ApplyLanguage(*form, *model);
    }
};

TEST_F(HostileLanguage, ThousandFilesOfAnyBytesLeaveTheCaptions) {
    load();
    const Captions design = captions();
    QRandomGenerator random(3);
    for (int round = 0; round < 1000; ++round) {
        QByteArray bytes(random.bounded(600), '\0');
        for (char& byte : bytes) {
            // Half of them from the characters that a file is made of.
            byte =
                random.bounded(2) == 0 ? "[]=;\"\r\n\0 x"[random.bounded(10)] : static_cast<char>(random.bounded(256));
        }
        apply(bytes);
        ASSERT_EQ(captions(), design) << bytes.toHex().toStdString();
    }
}

TEST_F(HostileLanguage, AFileCutAtAnyByteGivesEachCaptionWholeOrCutOrAsItWas) {
    load();
    const Captions design = captions();
    const QByteArray whole = englishFile();
    ASSERT_GT(whole.size(), 500);
    apply(whole);
    const Captions english = captions();
    int wholeFiles = 0;
    for (qsizetype length = 0; length <= whole.size(); length += 1 + length / 400) {
        restore(design);
        apply(whole.left(length));
        int cut = 0;
        for (const auto& [name, caption] : captions()) {
            const QString& full = english.at(name);
            if (caption != full && caption != design.at(name)) {
                ++cut;
                EXPECT_TRUE(full.startsWith(caption)) << name.toStdString() << " at " << length;
            }
        }
        // The last line may apply to two captions: that of a menu and that of its item.
        EXPECT_LE(cut, 2) << length;
        wholeFiles += captions() == english ? 1 : 0;
    }
    EXPECT_GE(wholeFiles, 1);
}

TEST_F(HostileLanguage, HugeValuesAreCutAt127CharactersAndTheWindowKeepsItsSize) {
    load();
    form->show();
    const QSize size = form->size();
    QByteArray file = "[FrmCom]\n";
    for (const char* key : {"Caption", "mnuFile", "mnuOpen", "Frame1", "Label1", "Label3", "LabP", "LabY1", "image1"}) {
        file += QByteArray(key) + "=" + QByteArray(100000, 'W') + "\n";
    }
    apply(file);
    form->grab();
    EXPECT_EQ(form->size(), size);
    EXPECT_EQ(item("mnuFile").text().size(), 127);
    EXPECT_EQ(caption("LabP").size(), 127);
    EXPECT_EQ(control<FramePanel>("Frame1").caption().size(), 127);
}

TEST_F(HostileLanguage, AFileOfManyMegabytesIsReadUpToItsBound) {
    load();
    const Captions design = captions();
    apply(QByteArray(8 << 20, '[') + "\n[FrmCom]\nmnuFile=late\n");
    EXPECT_EQ(captions(), design);
}

TEST_F(HostileLanguage, MissingSectionsLeaveTheCaptions) {
    load();
    const Captions design = captions();
    apply("mnuFile=no section\n[frmAbout]\nmnuFile=another window's\n[FrmComCombo9]\n0=x\n");
    EXPECT_EQ(captions(), design);
}

TEST_F(HostileLanguage, EmptyAndBlankValuesLeaveTheCaptions) {
    load();
    const Captions design = captions();
    apply("[FrmCom]\nmnuFile=\nmnuView=   \nmnuCom=\"\"\nCaption=\n[FrmComCombo3]\n0=\n");
    EXPECT_EQ(captions(), design);
}

TEST_F(HostileLanguage, KeysOfListEntriesThatDoNotExistAddNone) {
    load();
    apply("[FrmComCombo3]\n-1=x\n0=none\n4=five\n99999999999=x\n");
    EXPECT_EQ(cursorType().ListCount(), 4);
    EXPECT_EQ(cursorType().List(0), u"none"_s);
}

TEST_F(HostileLanguage, MarkupAndPathsInAValueAreShownAsTheyStand) {
    load();
    form->show();
    apply("[FrmCom]\nLabP=<b>x</b><img src=/etc/passwd>\nLabel3=%1%n%s\n");
    EXPECT_EQ(caption("LabP"), u"<b>x</b><img src=/etc/passwd>"_s);
    EXPECT_EQ(control<QLabel>("LabP").textFormat(), Qt::PlainText);
    EXPECT_EQ(caption("Label3"), u"%1%n%s"_s);
    form->grab();
}

TEST_F(HostileLanguage, AFolderInPlaceOfAFileLeavesTheCaptions) {
    load();
    const Captions design = captions();
    ASSERT_TRUE(QDir().mkpath(path(u"English.Lan"_s)));
    SetLanFile(*model, 1);
    ApplyLanguage(*form, *model);
    EXPECT_EQ(captions(), design);
}

} // namespace
} // namespace sixtrace::test
