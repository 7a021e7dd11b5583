// SPDX-License-Identifier: MIT
#include "platform/text/plainnumerals.h"

#include <clocale>
#include <string>

#ifndef _WIN32
#include <locale.h> // NOLINT(modernize-deprecated-headers): uselocale is not in <clocale>
#endif

namespace sixtrace {

#ifdef _WIN32

struct PlainNumerals::Saved {
    int perThread = 0;
    std::string numeric;
};

PlainNumerals::PlainNumerals()
    : m_saved(std::make_unique<Saved>()) {
    m_saved->perThread = _configthreadlocale(_ENABLE_PER_THREAD_LOCALE);
    m_saved->numeric = std::setlocale(LC_NUMERIC, nullptr);
    std::setlocale(LC_NUMERIC, "C");
}

PlainNumerals::~PlainNumerals() {
    std::setlocale(LC_NUMERIC, m_saved->numeric.c_str());
    _configthreadlocale(m_saved->perThread);
}

#else

struct PlainNumerals::Saved {
    locale_t plain = nullptr;
    locale_t before = nullptr;
};

PlainNumerals::PlainNumerals()
    : m_saved(std::make_unique<Saved>()) {
    const locale_t present = duplocale(uselocale(nullptr));
    m_saved->plain = newlocale(LC_NUMERIC_MASK, "C", present);
    if (m_saved->plain != nullptr) {
        m_saved->before = uselocale(m_saved->plain);
    } else if (present != nullptr) {
        freelocale(present);
    }
}

PlainNumerals::~PlainNumerals() {
    if (m_saved->plain != nullptr) {
        uselocale(m_saved->before);
        freelocale(m_saved->plain);
    }
}

#endif

} // namespace sixtrace
