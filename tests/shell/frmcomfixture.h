// SPDX-License-Identifier: MIT
#pragma once

#include "capture/capturewriter.h"
#include "platform/controls/look.h"
#include "shell/frmcom.h"
#include "support/scripteddialogs.h"
#include "support/sourcefolder.h"
#include "support/strings.h"
#include "view/frame.h"
#include "view/geometry.h"

#include <QAction>
#include <QApplication>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <memory>

namespace sixtrace::test {

/// A main window with a program folder of its own and scripted dialogs. A call that would end the process is counted.
class FrmComTest : public ::testing::Test {
protected:
    void SetUp() override { applyLook(*qApp); }

    [[nodiscard]] QString path(const QString& name) const { return m_folder.filePath(name); }
    [[nodiscard]] QString iniFile() const { return path(u"vkq.ini"_s); }

    void write(const QString& name, const QByteArray& bytes) const {
        QFile file(path(name));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        ASSERT_EQ(file.write(bytes), bytes.size());
    }
    [[nodiscard]] QByteArray read(const QString& name) const {
        QFile file(path(name));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(no file)");
    }
    void installLanguages() const {
        for (const char* name : {"ChineseS.Lan", "English.Lan"}) {
            const QString file = QString::fromLatin1(name);
            ASSERT_TRUE(QFile::copy(QStringLiteral(SIXTRACE_SOURCE_DIR "/lang/") + file, path(file)));
        }
    }

    FrmCom& load() {
        form = std::make_unique<FrmCom>(
            *model, FrmComServices{dialogs, [this] { return m_folder.path(); }, [this] { ++ends; }});
        return *form;
    }
    /// Moves a zero marker to a top in twips, as a drag would.
    void putMarker(int channel, double top) const {
        form->state().markers[channel].top = Twips(top);
        form->showState();
    }
    template<typename Control>
    [[nodiscard]] Control& control(const char* name) const {
        auto* found = form->findChild<Control*>(QString::fromLatin1(name));
        if (found == nullptr) {
            throw std::runtime_error(std::string("no control ") + name);
        }
        return *found;
    }
    [[nodiscard]] QAction& item(const char* name) const { return control<QAction>(name); }

    std::unique_ptr<publicM> model = std::make_unique<publicM>();
    ScriptedDialogs dialogs;
    int ends = 0;
    std::unique_ptr<FrmCom> form;

private:
    QTemporaryDir m_folder;
};

/// Suites about languages are in more than one file.
class Languages : public FrmComTest {};

/// The picture of an empty screen, drawn without the window.
struct EmptyScreen {
    Picture picture{kSurfaceWidth, kSurfaceHeight};

    explicit EmptyScreen(publicM& model) {
        Picture copy(kSurfaceWidth, kSurfaceHeight);
        picture.BackColor = 4194368;
        FrameRenderer().PicReDrawT(model, FrameInputs{}, picture, copy);
    }
};

inline bool samePixels(const Picture& one, const Picture& other) {
    return one.view() == other.view();
}

} // namespace sixtrace::test
