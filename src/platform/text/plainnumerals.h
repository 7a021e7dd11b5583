// SPDX-License-Identifier: MIT
#pragma once

#include <memory>

namespace sixtrace {

/// While an object exists, the C functions of this thread write numbers with a point as decimal mark in any locale. It
/// is for libraries that write files with these functions.
class PlainNumerals {
public:
    PlainNumerals();
    PlainNumerals(const PlainNumerals&) = delete;
    PlainNumerals& operator=(const PlainNumerals&) = delete;
    ~PlainNumerals();

private:
    struct Saved;
    std::unique_ptr<Saved> m_saved;
};

} // namespace sixtrace
