// SPDX-License-Identifier: MIT
#include "shell/frmcomcontrols.h"

#include "capture/markerstrip.h"
#include "platform/controls/arrowpair.h"
#include "platform/controls/framepanel.h"
#include "platform/controls/labels.h"
#include "platform/controls/listcombo.h"
#include "platform/controls/look.h"
#include "platform/controls/markerlabel.h"
#include "platform/controls/picturebox.h"
#include "platform/controls/positionbar.h"
#include "platform/controls/ticklist.h"
#include "platform/controls/toolbar.h"
#include "platform/drawing/lengths.h"
#include "shell/maintoolbar.h"
#include "view/geometry.h"

namespace sixtrace {

QString elementName(const QString& name, int index) {
    return QStringLiteral("%1(%2)").arg(name).arg(index);
}

namespace {

constexpr Colour kCursorColour = 0x00FFFF80;
constexpr Twips kStandInWidth{375};
constexpr Twips kStandInHeight{255};

template<typename Widget>
Widget* named(Widget* widget, const QString& name) {
    widget->setObjectName(name);
    return widget;
}

FramePanel* frame(QWidget& client, const QString& name, const QString& caption, double left, double top, double width,
                  double height) {
    auto* panel = named(new FramePanel(caption, &client), name);
    panel->setGeometry(rectOfTwips(left, top, width, height));
    return panel;
}

enum class Role { Caption, Value, Unit };

/// A label of a frame at its place in pixels. Captions and units are grey, values are dark.
ReadoutLabel* readout(FramePanel& panel, const QString& name, const QString& caption, const QRect& place, Role role,
                      Qt::Alignment alignment = Qt::AlignLeft | Qt::AlignVCenter) {
    auto* label = named(new ReadoutLabel(&panel), name);
    label->setGeometry(place);
    label->setAlignment(alignment);
    label->setCaption(caption);
    if (role != Role::Value) {
        setInk(*label, bench::kMuted);
    }
    return label;
}

void makeToolbar(QWidget& client, FrmComControls& c) {
    c.Toolbar1 = makeMainToolbar(client);
    c.Toolbar1->setGeometry(0, 0, kClientWidth, 35);
}

void makeStrip(QWidget& client, FrmComControls& c) {
    c.Picture3 = named(new QWidget(&client), QStringLiteral("Picture3"));
    c.Picture3->setAutoFillBackground(true);
    c.Picture3->setGeometry(rectOfTwips(120, 560, strip::kMarkerWidth.number(), strip::kHeight.number()));

    static const PerChannel<QString> captions{QStringLiteral("1->"), QStringLiteral("2->"), QStringLiteral("A->"),
                                              QStringLiteral("B->"), QStringLiteral("C->"), QStringLiteral("D->")};
    for (int channel = 0; channel < kChannels; ++channel) {
        MarkerLabel*& ZLabel = c.ZLabel[channel];
        ZLabel = named(new MarkerLabel(captions[channel], kStandInWidth, kStandInHeight, c.Picture3),
                       elementName(QStringLiteral("ZLabel"), channel));
        ZLabel->hide();
        MarkerLabel*& image1 = c.image1[channel];
        image1 = named(new MarkerLabel(captions[channel], strip::kMarkerWidth, strip::kMarkerHeight, c.Picture3),
                       elementName(QStringLiteral("image1"), channel));
        image1->setTop(strip::kCentreTop);
        image1->hide();
    }
    c.image2 = named(new MarkerLabel({}, kStandInWidth, strip::kMarkerHeight, c.Picture3), QStringLiteral("image2"));
    c.image2->setTop(strip::kCentreTop);
    c.image2->hide();
}

PictureBox* screenBox(QWidget& client, const QString& name, double left, double top) {
    auto* box = named(new PictureBox(kSurfaceWidth, kSurfaceHeight, &client), name);
    box->setGeometry(rectOfTwips(left, top, 9015, 6015));
    return box;
}

void makeScreen(QWidget& client, FrmComControls& c) {
    c.picHidden = {screenBox(client, QStringLiteral("picHidden(0)"), 2640, 840),
                   screenBox(client, QStringLiteral("picHidden(1)"), 3360, 600),
                   screenBox(client, QStringLiteral("picHidden(2)"), 960, 480)};
    for (PictureBox* hidden : c.picHidden) {
        hidden->hide();
    }
    c.Picture2 = screenBox(client, QStringLiteral("Picture2"), 480, 560);
    c.Line1 = {new CursorLine(*c.Picture2, QStringLiteral("Line1(0)"), 0, 100, 604, 100, kCursorColour),
               new CursorLine(*c.Picture2, QStringLiteral("Line1(1)"), 0, 300, 604, 300, kCursorColour)};
    c.Line2 = {new CursorLine(*c.Picture2, QStringLiteral("Line2(0)"), 180, 0, 180, 400, kCursorColour),
               new CursorLine(*c.Picture2, QStringLiteral("Line2(1)"), 420, 0, 420, 400, kCursorColour)};

    c.CenterPoint = named(new QLabel(c.Picture2), QStringLiteral("CenterPoint"));
    c.CenterPoint->setGeometry(200, 192, 201, 17);
    c.CenterPoint->setAlignment(Qt::AlignCenter);
    c.CenterPoint->setAutoFillBackground(true);
    c.CenterPoint->setTextFormat(Qt::PlainText);
    QPalette palette = c.CenterPoint->palette();
    palette.setColor(QPalette::WindowText, toQColor(kCursorColour));
    c.CenterPoint->setPalette(palette);
    c.CenterPoint->hide();
}

void makeCursorFrame(QWidget& client, FrmComControls& c) {
    c.Frame1 = frame(client, QStringLiteral("Frame1"), QStringLiteral("光标"), 9600, 600, 2295, 3255);
    c.Frame1->addRule(QRect(8, 168, 137, 1));
    FramePanel& f = *c.Frame1;
    const auto caption = [&f](const QString& name, const QString& text, int top) {
        return readout(f, name, text, QRect(8, top, 24, 18), Role::Caption);
    };
    const auto value = [&f](const QString& name, int top) {
        return readout(f, name, {}, QRect(36, top, 78, 18), Role::Value, Qt::AlignRight | Qt::AlignVCenter);
    };
    const auto unit = [&f](const QString& name, int top) {
        return readout(f, name, {}, QRect(118, top, 26, 18), Role::Unit);
    };
    c.LabYY1 = caption(QStringLiteral("LabYY1"), QStringLiteral("y1:"), 24);
    c.LabY1 = value(QStringLiteral("LabY1"), 24);
    c.LabYY11 = unit(QStringLiteral("LabYY11"), 24);
    c.LabYY2 = caption(QStringLiteral("LabYY2"), QStringLiteral("y2:"), 46);
    c.LabY2 = value(QStringLiteral("LabY2"), 46);
    c.LabYY22 = unit(QStringLiteral("LabYY22"), 46);
    c.Labddy = caption(QStringLiteral("Labddy"), QStringLiteral("dy:"), 68);
    c.LabDy = value(QStringLiteral("LabDy"), 68);
    c.LabDDYY = unit(QStringLiteral("LabDDYY"), 68);
    c.LabXX1 = caption(QStringLiteral("LabXX1"), QStringLiteral("x1:"), 98);
    c.LabX1 = value(QStringLiteral("LabX1"), 98);
    c.LabXX11 = unit(QStringLiteral("LabXX11"), 98);
    c.LabXX2 = caption(QStringLiteral("LabXX2"), QStringLiteral("x2:"), 120);
    c.LabX2 = value(QStringLiteral("LabX2"), 120);
    c.LabXX22 = unit(QStringLiteral("LabXX22"), 120);
    c.labDDx = caption(QStringLiteral("labDDx"), QStringLiteral("dx:"), 142);
    c.LabDx = value(QStringLiteral("LabDx"), 142);
    c.LabDDXX = unit(QStringLiteral("LabDDXX"), 142);

    c.Label3 = readout(f, QStringLiteral("Label3"), QStringLiteral("类型"), rectOfTwips(120, 2720, 615, 255),
                       Role::Value, Qt::AlignLeft | Qt::AlignTop);
    c.Combo3 = named(new ListCombo(&f), QStringLiteral("Combo3"));
    c.Combo3->setGeometry(rectOfTwips(840, 2640, 1335, 330));
}

void makeTimeAndVoltFrames(QWidget& client, FrmComControls& c) {
    const QString scaleAndPosition = QStringLiteral("刻度          位置        ");
    c.Frame2 = frame(client, QStringLiteral("Frame2"), QStringLiteral("水平"), 9600, 4080, 2295, 1215);
    c.Label2 = named(new TwoWordLabel(c.Frame2), QStringLiteral("Label2"));
    c.Label2->setText(scaleAndPosition);
    c.Label2->setGeometry(rectOfTwips(120, 360, 1935, 255));
    c.Combo1 = named(new ListCombo(c.Frame2), QStringLiteral("Combo1"));
    c.Combo1->setGeometry(rectOfTwips(120, 600, 1335, 360));
    c.UpDown2 = named(new ArrowPair(Qt::Horizontal, c.Frame2), QStringLiteral("UpDown2"));
    c.UpDown2->setGeometry(rectOfTwips(1560, 600, 495, 300));

    c.Frame3 = frame(client, QStringLiteral("Frame3"), QStringLiteral("垂直"), 9600, 5400, 2295, 1215);
    c.Label1 = named(new TwoWordLabel(c.Frame3), QStringLiteral("Label1"));
    c.Label1->setText(scaleAndPosition);
    c.Label1->setGeometry(rectOfTwips(120, 360, 2055, 255));
    c.Combo2 = named(new ListCombo(c.Frame3), QStringLiteral("Combo2"));
    c.Combo2->setGeometry(rectOfTwips(120, 720, 1335, 360));
    c.UpDown1 = named(new ArrowPair(Qt::Vertical, c.Frame3), QStringLiteral("UpDown1"));
    c.UpDown1->setGeometry(rectOfTwips(1680, 600, 240, 495));

    setInk(*c.Label1, bench::kMuted);
    setInk(*c.Label2, bench::kMuted);
}

void makeMeasurementFrame(QWidget& client, FrmComControls& c) {
    // Frame4 covers the last row of pixels of Frame3, so it is made after it.
    c.Frame4 = frame(client, QStringLiteral("Frame4"), {}, 8280, 6600, 3615, 1215);
    const auto pair = [&c](const QString& name, const QString& caption, const QString& valueName, double top,
                           ReadoutLabel*& label, ReadoutLabel*& value) {
        label = readout(*c.Frame4, name, caption, rectOfTwips(240, top, 1095, 255), Role::Caption);
        value = readout(*c.Frame4, valueName, {}, rectOfTwips(1320, top, 2175, 255), Role::Value);
    };
    pair(QStringLiteral("LabP"), {}, QStringLiteral("LabPe"), 240, c.LabP, c.LabPe);
    pair(QStringLiteral("LabPP"), QStringLiteral("频率："), QStringLiteral("labPPe"), 540, c.LabPP, c.labPPe);
    pair(QStringLiteral("LabMax"), QStringLiteral("峰峰值："), QStringLiteral("LabMaxx"), 840, c.LabMax, c.LabMaxx);
}

void makeFoot(QWidget& client, FrmComControls& c) {
    c.List1 = named(new TickList(&client), QStringLiteral("List1"));
    c.List1->setGeometry(rectOfTwips(120, 6600, 7815, 1320));

    auto* band = new StatusBand(&client);
    band->setGeometry(0, 530, kClientWidth, kClientHeight - 530);
    c.Label4 = named(new PathLabel(&client), QStringLiteral("Label4"));
    c.Label4->setGeometry(rectOfTwips(0, 7920, 9135, 375));
    c.Label5 = named(new PathLabel(&client), QStringLiteral("Label5"));
    c.Label5->setGeometry(rectOfTwips(9120, 7920, 2775, 375));
    setInk(*c.Label4, bench::kMuted);
    setInk(*c.Label5, bench::kMuted);
}

void makeBar(QWidget& client, FrmComControls& c) {
    // The bar is nine pixels wide, and the strip covers the ninth.
    c.VScroll1 = named(new PositionBar(&client), QStringLiteral("VScroll1"));
    c.VScroll1->setGeometry(rectOfTwips(0, 560, 135, 6015));
    c.VScroll1->lower();
}

} // namespace

std::array<Readout, 6> cursorReadouts(const FrmComControls& controls) {
    const FrmComControls& c = controls;
    return {{{c.LabYY1, c.LabY1, c.LabYY11},
             {c.LabYY2, c.LabY2, c.LabYY22},
             {c.Labddy, c.LabDy, c.LabDDYY},
             {c.LabXX1, c.LabX1, c.LabXX11},
             {c.LabXX2, c.LabX2, c.LabXX22},
             {c.labDDx, c.LabDx, c.LabDDXX}}};
}

std::optional<ReadoutTexts> shownTexts(const Readout& readout) {
    const QString value = readout.value->caption().trimmed();
    if (readout.value->isHidden() || value.isEmpty()) {
        return std::nullopt;
    }
    QString name = readout.name->caption().trimmed();
    if (name.endsWith(u':') || name.endsWith(u'：')) {
        name.chop(1);
    }
    return ReadoutTexts{name, value, readout.unit != nullptr ? readout.unit->caption().trimmed() : QString()};
}

FrmComControls makeFrmComControls(QWidget& client) {
    FrmComControls c{};
    makeToolbar(client, c);
    makeStrip(client, c);
    makeScreen(client, c);
    makeCursorFrame(client, c);
    makeTimeAndVoltFrames(client, c);
    makeMeasurementFrame(client, c);
    makeFoot(client, c);
    makeBar(client, c);
    return c;
}

} // namespace sixtrace
