// SPDX-License-Identifier: MIT
#pragma once

#include <memory>

namespace sixtrace {

/// For as long as it lives, C functions of this thread write numbers with a point as decimal mark, whatever the
/// desktop's locale is: for libraries that make files with them.
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
