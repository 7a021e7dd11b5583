// SPDX-License-Identifier: MIT
#pragma once

#include "view/frame.h"
#include "view/geometry.h"

#include <cmath>
#include <optional>

namespace sixtrace::test {

/// A frame drawn statement by statement with the operations of a picture, slow and plain: what the renderer has to
/// look like. It knows nothing of layers, runs or vector instructions.
class NaiveFrame {
public:
    NaiveFrame(publicM& model, const FrameInputs& inputs, Picture& picture)
        : m(model)
        , m_inputs(inputs)
        , m_picture(picture) {}

    void draw(Picture& hidden) {
        graticule();
        for (std::size_t c = 0; c < 6; ++c) {
            const auto y = rounded((210.0 / 2 + m_inputs.markerTop[c]) / 6030 * 400);
            if (!y || *y < -32768 || *y > 32767) {
                return;
            }
            m.ChannelYPos[c] = static_cast<std::int16_t>(*y);
        }
        for (int channel = 0; channel < 6; ++channel) {
            const auto c = static_cast<std::size_t>(channel);
            m_picture.ForeColor = m.LineColor[c];
            if (m_inputs.selected[c] && m.ChannelPresent[c] == 1 && !trace(channel)) {
                return;
            }
        }
        hidden.BitBlt(0, 0, 600, 400, m_picture, 0, 0);
    }

    void graticule() {
        Picture& p = m_picture;
        p.Cls();
        p.drawMode = DrawMode::CopyPen;
        p.ForeColor = m.GridColor;
        p.drawStyle = DrawStyle::Solid;
        p.Line(0, 0, 600, 0);
        p.Line(0, 0, 0, 400);
        p.Line(600, 0, 600, 400);
        p.Line(0, 400, 600, 400);
        const int n = m.FileKind == 2 || m.FileKind == 3 ? 10 : 12;
        const int w = 600 / n;
        if (m_inputs.graticule) {
            p.drawStyle = DrawStyle::Dot;
            for (int i = 1; i <= 7; ++i) {
                p.Line(0, 50 * i, 600, 50 * i);
            }
            for (int i = 1; i <= n - 1; ++i) {
                p.Line(w * i, 0, w * i, 400);
            }
        } else {
            p.LineBox(0, 0, 600, 400);
            p.Line(300, 0, 300, 400);
            p.Line(0, 200, 600, 200);
            for (int y = 50; y <= 350; y += 50) {
                p.Line(0, y, 10, y);
                p.Line(590, y, 600, y);
                p.Line(290, y, 310, y);
            }
            for (int i = 1; i <= n - 1; ++i) {
                p.Line(w * i, 0, w * i, 10);
                p.Line(w * i, 390, w * i, 400);
                p.Line(w * i, 190, w * i, 210);
            }
        }
        p.drawStyle = DrawStyle::Solid;
        for (int y = 0; y <= 410; y += 10) {
            p.Line(0, y, 5, y);
            p.Line(595, y, 600, y);
            p.Line(295, y, 305, y);
        }
        for (int i = 0; i <= 5 * n + 1; ++i) {
            const int x = w / 5 * i;
            p.Line(x, 0, x, 5);
            p.Line(x, 395, x, 400);
            p.Line(x, 195, x, 205);
        }
    }

private:
    static std::optional<std::int32_t> rounded(double value) {
        const double whole = std::rint(value);
        if (!(whole >= -2147483648.0 && whole <= 2147483647.0)) {
            return std::nullopt;
        }
        return static_cast<std::int32_t>(whole);
    }

    [[nodiscard]] double x(double i) const { return m_x0 + i * m_dx; }
    [[nodiscard]] double y(int channel, int row) const {
        const auto c = static_cast<std::size_t>(channel);
        return m.ChannelYPos[c] -
               (m.SampleData(channel, row) * static_cast<double>(m.VoltPerCount[c]) * 400) / (m_volts * 8000);
    }

    /// Stores the point of counter `i`; nothing where that ends in an error.
    std::optional<int> store(int channel, double i) {
        const double row = std::rint(i);
        if (!(row >= 0 && row <= 10230)) {
            return std::nullopt;
        }
        const int at = static_cast<int>(row);
        const auto px = rounded(x(i));
        if (!px) {
            return std::nullopt;
        }
        m.PlotX(channel, at) = *px;
        const auto py = rounded(y(channel, at));
        if (!py) {
            return std::nullopt;
        }
        m.PlotY(channel, at) = *py;
        return at;
    }

    bool visit(int channel, double first, double last) {
        for (double i = first; i <= last; ++i) {
            const auto at = store(channel, i);
            if (!at) {
                return false;
            }
            if (m_inputs.line) {
                m_picture.Line(m.PlotX(channel, *at), m.PlotY(channel, *at));
            } else {
                m_picture.PSet(m.PlotX(channel, *at), m.PlotY(channel, *at));
            }
        }
        return true;
    }

    void lineToItself(int channel, int at) {
        const auto px = m.PlotX(channel, at);
        const auto py = m.PlotY(channel, at);
        m_picture.Line(px, py, px, py);
    }

    bool trace(int channel) {
        const auto c = static_cast<std::size_t>(channel);
        m.SampleStep[c] = m.SampleInterval[c];
        if (m.TimeIndexView[c] < 0 || m.TimeIndexView[c] > 27) {
            return false;
        }
        const double tView = m.TimeBaseTable[static_cast<std::size_t>(m.TimeIndexView[c])];
        m.MsPerPixel[c] = static_cast<float>(tView * 12 / 600);
        if (m.VoltIndexView[c] < 0 || m.VoltIndexView[c] > 9) {
            return false;
        }
        m_volts = m.VoltTable[static_cast<std::size_t>(m.VoltIndexView[c])];
        m.VoltPerPixel[c] = static_cast<float>(m_volts * 8 / 400);
        if (m.TimeIndex[c] < 0 || m.TimeIndex[c] > 27 || m.ScreenPoints[c] == 0) {
            return false;
        }
        const double tCap = m.TimeBaseTable[static_cast<std::size_t>(m.TimeIndex[c])];
        m_x0 = 300 - (300 - static_cast<double>(m.ChannelXShift[c])) * tCap / tView;
        m_dx = tCap / tView / m.ScreenPoints[c] * 600;
        const auto px = rounded(m_x0);
        const auto py = rounded(y(channel, 0));
        if (!px || !py) {
            return false;
        }
        m_picture.PSet(*px, *py);

        const double s = m.ScreenPoints[c];
        const double n = m.SampleCount[c];
        const double p = m.ScanPoint[c];
        if (m.TimeIndex[c] < 22 || n < s) {
            return visit(channel, 0, n - 1);
        }
        if (s * 0.92 >= p) {
            const double g = s * 0.08 + p;
            if (!m_inputs.line) {
                return visit(channel, 0, p) && visit(channel, g, s);
            }
            if (!visit(channel, 0, p - 1)) {
                return false;
            }
            const double counter = p > 0 ? p : 0; // where the loop left it
            if (counter > 10230) {
                return false;
            }
            lineToItself(channel, static_cast<int>(counter));
            const auto at = store(channel, g);
            if (!at) {
                return false;
            }
            lineToItself(channel, *at);
            return visit(channel, g, s);
        }
        const double h = s * 0.08 - (s - p);
        if (!m_inputs.line) {
            return visit(channel, h, p);
        }
        const auto at = store(channel, h);
        if (!at) {
            return false;
        }
        lineToItself(channel, *at);
        return visit(channel, h + 1, p);
    }

    publicM& m;
    const FrameInputs& m_inputs;
    Picture& m_picture;
    double m_x0 = 0;
    double m_dx = 0;
    double m_volts = 1;
};

} // namespace sixtrace::test
