// SPDX-License-Identifier: MIT
#include "channelchoice.h"

#include <algorithm>

namespace sixtrace::kqx {

std::optional<ChannelChoice> channelsOf(const Arguments& arguments) {
    ChannelChoice choice{};
    if (!arguments.has("channels")) {
        choice.fill(true);
        return choice;
    }
    const std::string list = arguments.value("channels") + ',';
    for (std::size_t start = 0; start < list.size();) {
        const std::size_t end = list.find(',', start);
        const std::string_view name = std::string_view(list).substr(start, end - start);
        std::size_t channel = 0;
        while (channel < choice.size() && recordLabel(channel) != name) {
            ++channel;
        }
        if (channel == choice.size()) {
            failWith(WrongUse, "--channels takes ch1, ch2, A, B, C and D, separated by commas");
            return std::nullopt;
        }
        choice[channel] = true;
        start = end + 1;
    }
    return choice;
}

} // namespace sixtrace::kqx
