// SPDX-License-Identifier: MIT
// Changes a capture in the places that its readers check. A random change of a byte would mostly hit samples, and a
// change of a count alone would hide all blocks after it.
#include "capture/filelayout.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>
#include <random>
#include <string_view>
#include <vector>

extern "C" std::size_t LLVMFuzzerMutate(std::uint8_t* data, std::size_t size, std::size_t room);

namespace {

using namespace sixtrace;
using Bytes = std::vector<std::uint8_t>;

class Mutation {
public:
    Mutation(Bytes bytes, unsigned seed)
        : m_bytes(std::move(bytes))
        , m_random(seed) {
        findBlocks();
    }

    [[nodiscard]] Bytes made() {
        switch (pick(6)) {
        case 0:
            setForm();
            break;
        case 1:
        case 2:
            setField();
            break;
        case 3:
            setCounts();
            break;
        case 4:
            appendBlock();
            break;
        default:
            setId();
        }
        return m_bytes;
    }

private:
    [[nodiscard]] std::size_t pick(std::size_t count) { return m_random() % count; }
    template<typename List>
    [[nodiscard]] auto oneOf(const List& list) {
        return list[pick(std::size(list))];
    }

    [[nodiscard]] std::uint32_t number(std::size_t at) const {
        std::uint32_t value = 0;
        for (std::size_t i = 0; i < layout::kFieldSize; ++i) {
            value |= static_cast<std::uint32_t>(m_bytes[at + i]) << (8 * i);
        }
        return value;
    }
    void setNumber(std::size_t at, std::uint32_t value) {
        for (std::size_t i = 0; i < layout::kFieldSize && at + i < m_bytes.size(); ++i) {
            m_bytes[at + i] = static_cast<std::uint8_t>(value >> (8 * i));
        }
    }

    [[nodiscard]] std::size_t blockSize() const { return layout::kBlockStart + m_fields * layout::kFieldSize; }

    void findBlocks() {
        const bool plain = m_bytes.size() > 6 && std::equal(m_bytes.begin() + 3, m_bytes.begin() + 6, "bin");
        m_fields = layout::blockFields(plain ? 1 : 2).size();
        std::size_t at = layout::kHeaderSize;
        while (at + blockSize() <= m_bytes.size()) {
            m_blocks.push_back(at);
            const auto points = static_cast<std::int32_t>(number(at + layout::kBlockStart));
            const auto count = static_cast<std::int32_t>(number(at + layout::kBlockStart + layout::kFieldSize));
            at += blockSize() + static_cast<std::size_t>(layout::samplesToNextBlock(count, points));
        }
    }

    void setForm() {
        if (m_bytes.size() < layout::kHeaderSize) {
            m_bytes.resize(layout::kHeaderSize);
        }
        const std::string_view tag = oneOf(captureForms()).tag;
        std::copy(layout::kMagic.begin(), layout::kMagic.end(), m_bytes.begin());
        std::copy(tag.begin(), tag.end(), m_bytes.begin() + layout::kMagic.size());
    }

    void setField() {
        if (m_blocks.empty()) {
            return appendBlock();
        }
        static constexpr std::array<std::uint32_t, 22> kTelling{
            0,          1,          2,          3,          4,          9,          10,     11,
            27,         28,         100,        10231,      10232,      0x7FFF,     0x8000, 0xFFFFFF9C,
            0xFFFFFFFF, 0x7FFFFFFF, 0x80000000, 0x3F800000, 0x7F800000, 0x7FC00000,
        };
        const std::size_t at = oneOf(m_blocks) + layout::kBlockStart + layout::kFieldSize * pick(m_fields);
        setNumber(at, pick(4) == 0 ? static_cast<std::uint32_t>(m_random()) : oneOf(kTelling));
    }

    /// Changes the counts of a block together with its samples, so that a reader still finds the next block.
    void setCounts() {
        if (m_blocks.empty()) {
            return appendBlock();
        }
        const std::size_t block = pick(m_blocks.size());
        const std::size_t at = m_blocks[block];
        const std::size_t first = at + blockSize();
        const std::size_t next = block + 1 < m_blocks.size() ? m_blocks[block + 1] : m_bytes.size();
        const auto count = static_cast<std::uint32_t>(pick(64));
        const auto points = static_cast<std::uint32_t>(pick(2) == 0 ? count : pick(64));
        setNumber(at + layout::kBlockStart, points);
        setNumber(at + layout::kBlockStart + layout::kFieldSize, count);
        const auto wanted = static_cast<std::size_t>(
            layout::samplesToNextBlock(static_cast<std::int32_t>(count), static_cast<std::int32_t>(points)));
        Bytes samples(m_bytes.begin() + static_cast<std::ptrdiff_t>(first),
                      m_bytes.begin() + static_cast<std::ptrdiff_t>(next));
        samples.resize(wanted, static_cast<std::uint8_t>(m_random()));
        Bytes made(m_bytes.begin(), m_bytes.begin() + static_cast<std::ptrdiff_t>(first));
        made.insert(made.end(), samples.begin(), samples.end());
        made.insert(made.end(), m_bytes.begin() + static_cast<std::ptrdiff_t>(next), m_bytes.end());
        m_bytes = std::move(made);
    }

    void appendBlock() {
        if (m_bytes.size() < layout::kHeaderSize) {
            setForm();
        }
        Bytes block(blockSize());
        const std::string_view ids = "12ABCD";
        block[0] = 'C';
        block[1] = 'H';
        block[2] = static_cast<std::uint8_t>(oneOf(ids));
        const std::size_t count = pick(16);
        block[layout::kBlockStart] = static_cast<std::uint8_t>(count + pick(4));
        block[layout::kBlockStart + layout::kFieldSize] = static_cast<std::uint8_t>(count);
        m_bytes.insert(m_bytes.end(), block.begin(), block.end());
        m_bytes.resize(m_bytes.size() + layout::kSampleSize * count, static_cast<std::uint8_t>(m_random()));
    }

    void setId() {
        if (m_blocks.empty()) {
            return appendBlock();
        }
        const std::string_view ids = "12ABCD3\0x";
        m_bytes[oneOf(m_blocks) + layout::kBlockMark.size()] = static_cast<std::uint8_t>(oneOf(ids));
    }

    Bytes m_bytes;
    std::minstd_rand m_random;
    std::vector<std::size_t> m_blocks; ///< where the blocks begin that have all their fields
    std::size_t m_fields = 0;
};

} // namespace

extern "C" std::size_t LLVMFuzzerCustomMutator(std::uint8_t* data, std::size_t size, std::size_t room, unsigned seed) {
    if (seed % 2 == 0) {
        return LLVMFuzzerMutate(data, size, room);
    }
    const Bytes made = Mutation(Bytes(data, data + size), seed).made();
    const std::size_t length = std::min(made.size(), room);
    if (length > 0) {
        std::memcpy(data, made.data(), length);
    }
    return length;
}
