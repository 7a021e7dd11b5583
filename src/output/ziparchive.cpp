// SPDX-License-Identifier: MIT
#include "output/ziparchive.h"

#include <zip.h>

#include <memory>

namespace sixtrace {

namespace {

/// The first moment that an archive can tell.
constexpr zip_uint16_t kNoTime = 0;
constexpr zip_uint16_t kFirstDate = (1U << 5) | 1U;

struct SourceFree {
    void operator()(zip_source_t* source) const { zip_source_free(source); }
};
using Source = std::unique_ptr<zip_source_t, SourceFree>;

std::optional<std::string> contentOf(zip_source_t* source) {
    zip_stat_t about;
    if (zip_source_stat(source, &about) != 0 || zip_source_open(source) != 0) {
        return std::nullopt;
    }
    std::string content(about.size, '\0');
    const zip_int64_t got = zip_source_read(source, content.data(), content.size());
    zip_source_close(source);
    return got == static_cast<zip_int64_t>(content.size()) ? std::optional(std::move(content)) : std::nullopt;
}

} // namespace

std::optional<std::string> ZipArchive::file() const {
    zip_error_t error;
    zip_error_init(&error);
    const Source target(zip_source_buffer_create(nullptr, 0, 0, &error));
    if (target == nullptr) {
        return std::nullopt;
    }
    zip_source_keep(target.get()); // the archive gives up its own hold when it is closed
    zip_t* const archive = zip_open_from_source(target.get(), ZIP_TRUNCATE, &error);
    if (archive == nullptr) {
        zip_source_free(target.get());
        return std::nullopt;
    }
    bool added = true;
    for (const Entry& entry : m_entries) {
        zip_source_t* const bytes = zip_source_buffer(archive, entry.bytes.data(), entry.bytes.size(), 0);
        const zip_int64_t index =
            bytes == nullptr ? -1 : zip_file_add(archive, entry.name.c_str(), bytes, ZIP_FL_ENC_UTF_8);
        if (index < 0) {
            zip_source_free(bytes);
            added = false;
            break;
        }
        const auto place = static_cast<zip_uint64_t>(index);
        const bool stored = entry.packing == Packing::Stored;
        added = zip_set_file_compression(archive, place, stored ? ZIP_CM_STORE : ZIP_CM_DEFLATE, 0) == 0 &&
                zip_file_set_dostime(archive, place, kNoTime, kFirstDate, 0) == 0;
    }
    if (!added || zip_close(archive) != 0) {
        zip_discard(archive);
        return std::nullopt;
    }
    return contentOf(target.get());
}

} // namespace sixtrace
