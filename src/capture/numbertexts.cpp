// SPDX-License-Identifier: MIT
#include "capture/numbertexts.h"

#include <array>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <string_view>

namespace sixtrace {

namespace {

constexpr int kDigits = 12;

constexpr std::array<double, 23> kTens{1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,  1e8,  1e9,  1e10, 1e11,
                                       1e12, 1e13, 1e14, 1e15, 1e16, 1e17, 1e18, 1e19, 1e20, 1e21, 1e22};

} // namespace

void appendNumber(std::string& out, double value) {
    if (!std::isfinite(value)) {
        return;
    }
    if (value == 0) {
        out += '0';
        return;
    }
    const double magnitude = std::fabs(value);
    int exponent = static_cast<int>(std::floor(std::log10(magnitude)));
    const int scale = kDigits - 1 - exponent;
    if (scale >= static_cast<int>(kTens.size()) || scale <= -static_cast<int>(kTens.size())) {
        std::array<char, 40> buffer{};
        const auto [end, error] = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value,
                                                std::chars_format::scientific, kDigits - 1);
        out.append(buffer.data(), end);
        return;
    }
    const double scaled = scale >= 0 ? magnitude * kTens[static_cast<std::size_t>(scale)]
                                     : magnitude / kTens[static_cast<std::size_t>(-scale)];
    auto digits = static_cast<std::uint64_t>(std::llround(scaled));
    int count = kDigits;
    if (digits >= 1'000'000'000'000) { // rounded up to one digit more
        ++exponent;
    }
    while (digits % 10 == 0) {
        digits /= 10;
    }
    std::array<char, 24> buffer{};
    const auto [end, error] = std::to_chars(buffer.data(), buffer.data() + buffer.size(), digits);
    const std::string_view text(buffer.data(), end);
    count = static_cast<int>(text.size());
    if (value < 0) {
        out += '-';
    }
    if (exponent < -5 || exponent >= kDigits + 3) {
        out += text.front();
        if (count > 1) {
            out += '.';
            out += text.substr(1);
        }
        out += 'e';
        out += std::to_string(exponent);
    } else if (exponent < 0) {
        out += "0.";
        out.append(static_cast<std::size_t>(-exponent - 1), '0');
        out += text;
    } else if (count <= exponent + 1) {
        out += text;
        out.append(static_cast<std::size_t>(exponent + 1 - count), '0');
    } else {
        out += text.substr(0, static_cast<std::size_t>(exponent) + 1);
        out += '.';
        out += text.substr(static_cast<std::size_t>(exponent) + 1);
    }
}

} // namespace sixtrace
