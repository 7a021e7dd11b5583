// SPDX-License-Identifier: MIT
#pragma once

#include "acquire/frmcomset.h"
#include "acquire/ptypeer.h"
#include "acquire/scriptedlink.h"
#include "capture/scenes.h"
#include "instrument/blocksender.h"
#include "platform/controls/look.h"
#include "platform/files/profilefile.h"
#include "shell/frmcom.h"
#include "support/scripteddialogs.h"
#include "support/sourcefolder.h"
#include "support/strings.h"

#include <QAction>
#include <QApplication>
#include <QDialog>
#include <QLabel>
#include <QLineEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

#include <gtest/gtest.h>

#include <memory>

namespace sixtrace::test {

/// A main window with a scripted instrument: a scripted USB link, and a pseudo terminal as port 3. A second terminal
/// can be plugged in as port 5.
class AcquireTest : public ::testing::Test {
protected:
    void SetUp() override {
        applyLook(*qApp);
        for (const char* name : {"ChineseS.Lan", "English.Lan"}) {
            ASSERT_TRUE(
                QFile::copy(QStringLiteral(SIXTRACE_SOURCE_DIR "/lang/") + QString::fromUtf8(name), path(name)));
        }
    }

    [[nodiscard]] QString path(const char* name) const { return m_folder.filePath(QString::fromUtf8(name)); }
    [[nodiscard]] QByteArray read(const QString& file) const {
        QFile source(file);
        return source.open(QIODevice::ReadOnly) ? source.readAll() : QByteArray("(no file)");
    }
    void setIni(const char* key, const char* value) const {
        ASSERT_TRUE(writeProfile(u"Common"_s, QString::fromUtf8(key), QString::fromUtf8(value), path("vkq.ini")).ok());
    }
    void removeLanguages() const {
        for (const char* name : {"ChineseS.Lan", "English.Lan"}) {
            ASSERT_TRUE(QFile::remove(path(name)));
        }
    }
    [[nodiscard]] static QByteArray capture(const char* scene, std::uint32_t seed = 1) {
        return captureBytes(*captureForm("V11"), *sceneBlocks(QString::fromUtf8(scene), seed));
    }

    FrmCom& load() {
        form = std::make_unique<FrmCom>(
            *model,
            FrmComServices{.dialogs = dialogs,
                           .applicationFolder = [this] { return m_folder.path(); },
                           .endProcess = [] {},
                           .acquisition = {.usb = &link,
                                           .locatePort = [this](int number) { return location(number); },
                                           .autoGetFile = [this] { return Result<QString>(path("AutoGet.bin")); }}});
        return *form;
    }
    template<typename Control>
    [[nodiscard]] static Control& control(QObject& owner, const char* name) {
        auto* found = owner.findChild<Control*>(QString::fromLatin1(name));
        if (found == nullptr) {
            throw std::runtime_error(std::string("no control ") + name);
        }
        return *found;
    }
    /// The names of the files in a folder.
    [[nodiscard]] static QStringList namesIn(const QString& folder) { return QDir(folder).entryList(QDir::Files); }
    [[nodiscard]] QAction& item(const char* name) const { return control<QAction>(*form, name); }
    [[nodiscard]] Acquisition& acquisition() const { return form->acquisition(); }
    [[nodiscard]] QString path4() const { return control<QLabel>(*form, "Label4").text(); }

    /// Runs `work` once the window is shown.
    static void whenShown(QWidget& window, const std::function<void()>& work) {
        auto* watch = new QTimer(&window);
        QObject::connect(watch, &QTimer::timeout, &window, [&window, watch, work] {
            if (window.isVisible()) {
                watch->stop();
                watch->deleteLater();
                work();
            }
        });
        watch->start(5);
    }
    static void click(QWidget& window, const char* button) { control<QPushButton>(window, button).click(); }

    /// Lets the other end of the line send one file after another.
    void serve(std::vector<QByteArray> files, const FetchPlan& plan = {}) {
        peer.play([files = std::move(files), plan](PtyPeer& p) {
            for (const QByteArray& file : files) {
                if (!sendAll(p, file, plan)) {
                    return;
                }
            }
        });
    }
    /// Sends one file from the peer. False when the program has stopped asking.
    static bool sendAll(PtyPeer& p, const QByteArray& file, const FetchPlan& plan = {},
                        const QByteArray& name = "WAVE.bin") {
        BlockSender sender(name, file, plan);
        while (!sender.over()) {
            const auto byte = p.takeOne(60000);
            if (!byte) {
                return false;
            }
            const QByteArray answer = sender.answer(*byte);
            if (!answer.isEmpty()) {
                p.send(answer);
            }
        }
        return true;
    }

    std::unique_ptr<publicM> model = std::make_unique<publicM>();
    ScriptedDialogs dialogs;
    ScriptedLink link;
    PtyPeer peer;
    PtyPeer other;
    bool hasPort = true;
    bool hasOther = false;
    std::unique_ptr<FrmCom> form;

private:
    [[nodiscard]] QString location(int number) const {
        if (number == 5 && hasOther) {
            return other.location();
        }
        return number == 3 && hasPort ? peer.location() : QString();
    }

    QTemporaryDir m_folder;
};

// Suites that are in more than one file.

class AutoGet : public AcquireTest {
protected:
    [[nodiscard]] QTimer& timer() const { return acquisition().timer(); }
};

class ManualGet : public AcquireTest {};

} // namespace sixtrace::test
