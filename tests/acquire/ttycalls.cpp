// SPDX-License-Identifier: MIT
// The functions at the end replace the system's functions of these names, also for the library of the serial port.
#include "acquire/ttycalls.h"

#include <dlfcn.h>
#include <termios.h>

namespace sixtrace::test::ttycalls {

namespace {

bool g_noting = false;
std::vector<std::string> g_calls;
std::vector<termios> g_settings;

} // namespace

void begin() {
    g_calls.clear();
    g_settings.clear();
    g_noting = true;
}

std::vector<std::string> end() {
    g_noting = false;
    return g_calls;
}

std::vector<termios> settingsAsked() {
    return g_settings;
}

static void note(const char* call) {
    if (g_noting) {
        g_calls.emplace_back(call);
    }
}

} // namespace sixtrace::test::ttycalls

extern "C" int tcdrain(int line) {
    sixtrace::test::ttycalls::note("drain");
    return reinterpret_cast<int (*)(int)>(dlsym(RTLD_NEXT, "tcdrain"))(line);
}

extern "C" int tcsetattr(int line, int when, const termios* settings) noexcept {
    sixtrace::test::ttycalls::note("settings");
    sixtrace::test::ttycalls::g_settings.push_back(*settings);
    const int result =
        reinterpret_cast<int (*)(int, int, const termios*)>(dlsym(RTLD_NEXT, "tcsetattr"))(line, when, settings);
    // A pseudo terminal has eight bits and no parity, and refuses other settings.
    return sixtrace::test::ttycalls::g_noting ? 0 : result;
}
