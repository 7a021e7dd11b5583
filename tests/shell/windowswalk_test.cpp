// SPDX-License-Identifier: MIT
// Every window of the program in both languages: no caption may be missing, and none may be cut off by its control.
#include "acquire/frmcomset.h"
#include "acquire/frmusb.h"
#include "acquire/recfrm.h"
#include "acquire/scriptedlink.h"
#include "capture/mdllan.h"
#include "output/frmdata.h"
#include "platform/controls/captions.h"
#include "platform/controls/framepanel.h"
#include "platform/controls/labels.h"
#include "platform/controls/listcombo.h"
#include "platform/controls/markerlabel.h"
#include "platform/files/profilefile.h"
#include "shell/capturewindow.h"
#include "shell/frmabout.h"
#include "shell/frmmessageout.h"
#include "support/strings.h"

#include <QCheckBox>
#include <QLabel>
#include <QMenuBar>
#include <QPushButton>
#include <QRadioButton>
#include <QStyle>
#include <QStyleOptionButton>
#include <QStyleOptionComboBox>
#include <QTimer>

namespace sixtrace::test {
namespace {

/// A window of the program: how it is loaded in the language of the model and handed to the test.
struct Loaded {
    publicM& model;
    ScriptedDialogs& dialogs;
    FrmCom& main;
};
using Look = std::function<void(QWidget&)>;

struct Window {
    const char* name;
    void (*show)(const Loaded&, const Look&);
    /// Controls that show values or texts that the program composes. They have no key in the language files.
    QStringList withoutKey{};
};

void showMain(const Loaded& s, const Look& look) {
    look(s.main);
}
void showAbout(const Loaded& s, const Look& look) {
    frmAbout window(s.model, s.dialogs, nullptr);
    window.setAttribute(Qt::WA_DeleteOnClose, false);
    look(window);
}
void showMessageOut(const Loaded& s, const Look& look) {
    FrmMessageOut window(s.model);
    look(window);
}
void showRecFrm(const Loaded& s, const Look& look) {
    TransferGate gate;
    recFrm window(s.model, s.dialogs, [](int) { return QString(); }, gate, {});
    window.load();
    look(window);
}
void showUsb(const Loaded& s, const Look& look) {
    ScriptedLink link;
    TransferGate gate;
    FrmUSB window(s.model, s.dialogs, link, gate, [](const TransferReport&) {});
    QTimer::singleShot(0, &window, [&] {
        look(window);
        window.hide();
    });
    window.showModally(nullptr);
}
void showComSet(const Loaded& s, const Look& look) {
    TransferGate gate;
    recFrm receiver(s.model, s.dialogs, [](int) { return QString(); }, gate, {});
    frmComSet window(s.model, s.dialogs, receiver);
    look(window);
}

void showTable(const Loaded& s, const Look& look) {
    frmData window(s.model, s.dialogs);
    look(window);
}

/// A new window needs one line here.
const std::vector<Window>& windows() {
    static const QStringList values =
        u"LabY1 LabY2 LabDy LabX1 LabX2 LabDx LabYY11 LabYY22 LabXX11 LabXX22 LabDDYY LabDDXX LabPe labPPe "
        "LabMaxx Label4 Label5 CenterPoint Frame4 image1 ZLabel image2"_s.split(u' ');
    static const std::vector<Window> list{
        {"FrmCom", &showMain, values},
        {"frmAbout", &showAbout, {u"lblTitle"_s, u"lblVersion"_s, u"picIcon"_s}},
        {"FrmMessageOut", &showMessageOut, {u"Label1"_s}},
        {"recFrm", &showRecFrm},
        {"FrmUSB", &showUsb},
        {"frmComSet", &showComSet},
        {"frmData", &showTable},
    };
    return list;
}

QString withoutIndex(const QString& objectName) {
    return objectName.section(u'(', 0, 0);
}
/// "SaveCheck3" for "SaveCheck(3)": the second key that an element of a control array may have.
QString withItsIndex(QString objectName) {
    return objectName.remove(u'(').remove(u')');
}

/// The caption as it is painted, without the mark of its key.
QString painted(QString caption) {
    caption.replace(u"&&"_s, u"\x01"_s);
    caption.remove(u'&');
    return caption.replace(u'\x01', u'&').trimmed();
}

bool holdsChinese(const QString& text) {
    return std::any_of(text.begin(), text.end(), [](QChar c) { return c.unicode() >= 0x2E80; });
}

/// Expects that a text fits into `room`, in pixels.
void expectRoom(const QObject& control, const QString& text, const QFont& font, int width, int height) {
    const QFontMetrics metrics(font);
    EXPECT_LE(metrics.horizontalAdvance(text), width)
        << control.objectName().toStdString() << ": \"" << text.toStdString() << '"';
    // The height of the letters counts, not the space between lines that a font reserves.
    EXPECT_LE(metrics.tightBoundingRect(text).height(), height) << control.objectName().toStdString();
}

void expectLabelFits(const QLabel& label) {
    if (const auto* readout = qobject_cast<const ReadoutLabel*>(&label)) {
        EXPECT_EQ(readout->paintedPixels(), kTextPixels)
            << label.objectName().toStdString() << " is painted smaller: " << label.text().toStdString();
        return;
    }
    if (dynamic_cast<const TwoWordLabel*>(&label) != nullptr) {
        const QStringList words = label.text().simplified().split(u' ');
        ASSERT_EQ(words.size(), 2) << label.text().toStdString();
        expectRoom(label, words[0], interfaceFont(kSmallTextPixels), 90, label.height());
        expectRoom(label, words[1], interfaceFont(kSmallTextPixels), 34, label.height());
        return;
    }
    const QRect room = label.contentsRect();
    if (label.wordWrap()) {
        const QRect needed =
            QFontMetrics(label.font()).boundingRect(QRect(0, 0, room.width(), 10000), Qt::TextWordWrap, label.text());
        EXPECT_LE(needed.width(), room.width()) << label.objectName().toStdString();
        EXPECT_LE(needed.height(), room.height()) << label.objectName().toStdString();
        return;
    }
    expectRoom(label, painted(label.text()), label.font(), room.width(), room.height());
}

void expectButtonFits(const QAbstractButton& button) {
    QStyleOptionButton option;
    option.initFrom(&button);
    option.text = button.text();
    const auto element = qobject_cast<const QRadioButton*>(&button) != nullptr ? QStyle::SE_RadioButtonContents
                         : qobject_cast<const QCheckBox*>(&button) != nullptr  ? QStyle::SE_CheckBoxContents
                                                                               : QStyle::SE_PushButtonContents;
    const QRect room = button.style()->subElementRect(element, &option, &button);
    expectRoom(button, painted(button.text()), button.font(), room.width(), room.height());
}

void expectEntriesFit(const QComboBox& combo) {
    QStyleOptionComboBox option;
    option.initFrom(&combo);
    option.frame = true;
    const QRect room =
        combo.style()->subControlRect(QStyle::CC_ComboBox, &option, QStyle::SC_ComboBoxEditField, &combo);
    for (int entry = 0; entry < combo.count(); ++entry) {
        EXPECT_FALSE(combo.itemText(entry).trimmed().isEmpty()) << combo.objectName().toStdString() << " " << entry;
        expectRoom(combo, combo.itemText(entry).trimmed(), combo.font(), room.width(), room.height());
    }
}

void expectFits(const QObject& control) {
    if (const auto* label = qobject_cast<const QLabel*>(&control)) {
        expectLabelFits(*label);
    } else if (const auto* button = qobject_cast<const QAbstractButton*>(&control)) {
        expectButtonFits(*button);
    } else if (const auto* frame = qobject_cast<const FramePanel*>(&control)) {
        expectRoom(*frame, painted(frame->caption()), frame->font(), frame->width() - 16, 17);
    } else if (const auto* marker = qobject_cast<const MarkerLabel*>(&control)) {
        expectRoom(*marker, marker->caption(), interfaceFont(kSmallTextPixels), marker->width(), marker->height());
    }
}

void expectMenuBarFits(const QWidget& window) {
    const auto* bar = window.findChild<QMenuBar*>();
    if (bar == nullptr) {
        return;
    }
    for (QAction* menu : bar->actions()) {
        EXPECT_FALSE(bar->actionGeometry(menu).isEmpty()) << menu->objectName().toStdString();
        EXPECT_LE(bar->actionGeometry(menu).right(), bar->width()) << menu->objectName().toStdString();
    }
}

class EveryWindow : public CaptureWindow, public ::testing::WithParamInterface<int> {
protected:
    [[nodiscard]] bool hasKey(const QString& section, const QString& key) const {
        QString file = model->LanFile;
        return !readProfile(section, key, {}, file).isEmpty();
    }
    void inspect(const Window& known, QWidget& window) const {
        const QString section = QString::fromLatin1(known.name);
        EXPECT_EQ(window.objectName(), section);
        EXPECT_FALSE(window.windowTitle().trimmed().isEmpty()) << known.name;
        EXPECT_FALSE(model->LanguageId != 0 && holdsChinese(window.windowTitle())) << known.name;
        int seen = 0;
        for (const QObject* control : window.findChildren<QObject*>()) {
            const CaptionKind kind = captionKind(*control);
            if (control->objectName().isEmpty() || control->objectName().startsWith(u"qt_") ||
                kind == CaptionKind::None) {
                continue;
            }
            SCOPED_TRACE(control->objectName().toStdString());
            ++seen;
            if (kind == CaptionKind::ComboBox) {
                expectEntriesFit(*qobject_cast<const QComboBox*>(control));
                continue;
            }
            const QString caption = captionOf(*control);
            EXPECT_FALSE(model->LanguageId != 0 && holdsChinese(caption)) << caption.toStdString();
            expectFits(*control);
            if (known.withoutKey.contains(withoutIndex(control->objectName()))) {
                continue;
            }
            EXPECT_FALSE(painted(caption).isEmpty()) << "no caption";
            EXPECT_TRUE(hasKey(section, withoutIndex(control->objectName())) ||
                        hasKey(section, withItsIndex(control->objectName())))
                << "no key in the language file";
        }
        EXPECT_GT(seen, 0);
        expectMenuBarFits(window);
    }
};

TEST_P(EveryWindow, HasEveryCaptionAndNoneIsCutOff) {
    installLanguages();
    write(u"vkq.ini"_s, "[Common]\nLanguage=" + QByteArray::number(GetParam()) + "\n");
    load();
    form->show();
    openScene("six");
    cursorType().setListIndex(3);
    for (const Window& window : windows()) {
        SCOPED_TRACE(window.name);
        int looks = 0;
        window.show({*model, dialogs, *form}, [&](QWidget& shown) {
            ++looks;
            shown.ensurePolished();
            inspect(window, shown);
        });
        EXPECT_EQ(looks, 1);
    }
}

INSTANTIATE_TEST_SUITE_P(InBothLanguages, EveryWindow, ::testing::Values(0, 1),
                         [](const auto& instance) { return instance.param == 0 ? "Chinese" : "English"; });

} // namespace
} // namespace sixtrace::test
