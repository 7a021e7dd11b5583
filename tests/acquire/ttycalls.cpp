// SPDX-License-Identifier: MIT
// The program's own functions of these names stand before those of the system, for the serial port's library too.
#include "acquire/ttycalls.h"

#include <dlfcn.h>
#include <termios.h>

namespace sixtrace::ttycalls {

namespace {

bool g_noting = false;
std::vector<std::string> g_calls;

} // namespace

void begin() {
    g_calls.clear();
    g_noting = true;
}

std::vector<std::string> end() {
    g_noting = false;
    return g_calls;
}

static void note(const char* call) {
    if (g_noting) {
        g_calls.emplace_back(call);
    }
}

} // namespace sixtrace::ttycalls

extern "C" int tcdrain(int line) {
    sixtrace::ttycalls::note("drain");
    return reinterpret_cast<int (*)(int)>(dlsym(RTLD_NEXT, "tcdrain"))(line);
}

extern "C" int tcsetattr(int line, int when, const termios* settings) noexcept {
    sixtrace::ttycalls::note("settings");
    return reinterpret_cast<int (*)(int, int, const termios*)>(dlsym(RTLD_NEXT, "tcsetattr"))(line, when, settings);
}
