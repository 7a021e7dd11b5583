// SPDX-License-Identifier: MIT
#pragma once

#include "output/frmprintpreview.h"
#include "output/frmprintsetup.h"
#include "output/pageview.h"
#include "output/printing.h"
#include "output/scriptedprinters.h"
#include "shell/frmcomfixture.h"

#include "capture/scenes.h"
#include "support/strings.h"

#include <QLineEdit>
#include <QMouseEvent>
#include <QPushButton>
#include <QRadioButton>
#include <QTest>
#include <string_view>

namespace sixtrace::test {

/// Dialogs that also answer questions and input boxes by script.
class AnsweringDialogs : public ScriptedDialogs {
public:
    std::deque<Answer> answers;
    std::deque<std::optional<QString>> inputs;
    QStringList prompts;
    QStringList presets;
    QStringList questionTitles;

    Answer question(const QString& text, MessageIcon icon, const QString& title) override {
        message(text, icon, title);
        questionTitles.append(title);
        const Answer answer = answers.empty() ? Answer::No : answers.front();
        if (!answers.empty()) {
            answers.pop_front();
        }
        return answer;
    }
    std::optional<QString> input(const QString& prompt, const QString&, const QString& preset) override {
        prompts.append(prompt);
        presets.append(preset);
        if (inputs.empty()) {
            return std::nullopt;
        }
        auto answer = inputs.front();
        inputs.pop_front();
        return answer;
    }
};

/// The main window with two scripted printers, a capture of six channels and its preview and page setup.
class PrintWindow : public test::FrmComTest {
protected:
    void open() {
        form = std::make_unique<FrmCom>(
            *model,
            FrmComServices{
                answering, [this] { return path(u"."_s); }, [this] { ++ends; }, [](const QString&) {}, {}, &devices});
        form->show();
    }
    void openWithCapture() {
        open();
        loadSix();
    }
    void loadSix() {
        const auto blocks = sceneBlocks(u"six"_s, 1);
        ASSERT_TRUE(blocks.has_value());
        const CaptureForm* form11 = captureForm("V11");
        ASSERT_NE(form11, nullptr);
        write(u"six.bin"_s, captureBytes(*form11, *blocks));
        answering.files.emplace_back(FileChoice{path(u"six.bin"_s), 1});
        item("mnuOpen").trigger();
        ASSERT_EQ(model->ChannelPresent[5], 1);
    }
    [[nodiscard]] Printing& printing() const { return form->printing(); }

    frmPrintPreview& openPreview() {
        item("mnuPrintView").trigger();
        return *printing().preview();
    }
    frmPrintSetup& openSetup() {
        item("mnuPageSet").trigger();
        return *printing().setup();
    }
    template<typename Control>
    [[nodiscard]] static Control& in(QObject& window, const char* name) {
        auto* found = window.findChild<Control*>(QString::fromLatin1(name));
        if (found == nullptr) {
            throw std::runtime_error(std::string("no control ") + name);
        }
        return *found;
    }
    [[nodiscard]] static QLineEdit& field(frmPrintSetup& setup, const char* name) { return in<QLineEdit>(setup, name); }
    static void press(frmPrintSetup& setup, const char* button) { in<QPushButton>(setup, button).click(); }
    void choose(const char* name) { in<QAction>(*printing().preview(), name).trigger(); }
    [[nodiscard]] PageView& page() const { return in<PageView>(*printing().preview(), "imgView(1)"); }
    static void unloadClosed() { QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete); }

    ScriptedPrinters devices;
    AnsweringDialogs answering;
};

/// The same with language files and the capture loaded: suites about the preview.
class Preview : public PrintWindow {
protected:
    void SetUp() override {
        PrintWindow::SetUp();
        installLanguages();
        openWithCapture();
    }
    /// A drag with the left button, in pixels of the picture.
    void drag(int dx, int dy) {
        const QPoint start = QPoint(400, 300) - page().pos();
        QTest::mousePress(&page(), Qt::LeftButton, {}, start);
        move(page(), start + QPoint(dx, dy), Qt::LeftButton);
        QTest::mouseRelease(&page(), Qt::LeftButton, {}, start);
    }
    static void move(QWidget& widget, QPoint to, Qt::MouseButtons buttons) {
        QMouseEvent event(QEvent::MouseMove, QPointF(to), widget.mapToGlobal(QPointF(to)), Qt::NoButton, buttons, {});
        QCoreApplication::sendEvent(&widget, &event);
    }
    void typePercent(const char* answer) {
        answering.inputs.emplace_back(QString::fromLatin1(answer));
        choose("mnuViewCustomize");
    }
};

} // namespace sixtrace::test
