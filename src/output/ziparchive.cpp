// SPDX-License-Identifier: MIT
#include "output/ziparchive.h"

#include <zip.h>

#include <algorithm>
#include <cstring>
#include <deque>
#include <utility>

namespace sixtrace {

namespace {

/// The earliest time that an archive can hold.
constexpr zip_uint16_t kNoTime = 0;
constexpr zip_uint16_t kFirstDate = (1U << 5) | 1U;
constexpr std::size_t kRoomForHeads = 100; ///< more than each of the two heads of an entry takes

/// The memory that the library writes the archive to. It grows at its end, and bytes that the library goes back to are
/// overwritten.
struct Target {
    std::string content;
    std::size_t at = 0;
    zip_error_t error{};

    zip_int64_t write(const void* data, std::size_t length) {
        const std::string_view bytes(static_cast<const char*>(data), length);
        content.replace(at, length, bytes); // at the end this appends
        at += length;
        return static_cast<zip_int64_t>(length);
    }
    zip_int64_t seek(void* data, std::size_t length) {
        const zip_int64_t place = zip_source_seek_compute_offset(at, content.size(), data, length, &error);
        at = place < 0 ? at : static_cast<std::size_t>(place);
        return place < 0 ? -1 : 0;
    }
    zip_int64_t stat(void* data) const {
        auto* const about = static_cast<zip_stat_t*>(data);
        zip_stat_init(about);
        about->size = content.size();
        about->valid |= ZIP_STAT_SIZE;
        return sizeof(zip_stat_t);
    }
};

zip_int64_t serve(void* user, void* data, zip_uint64_t length, zip_source_cmd_t command) {
    Target& target = *static_cast<Target*>(user);
    switch (command) {
    case ZIP_SOURCE_SUPPORTS:
        return zip_source_make_command_bitmap(
            ZIP_SOURCE_OPEN, ZIP_SOURCE_READ, ZIP_SOURCE_CLOSE, ZIP_SOURCE_STAT, ZIP_SOURCE_ERROR, ZIP_SOURCE_FREE,
            ZIP_SOURCE_SEEK, ZIP_SOURCE_TELL, ZIP_SOURCE_BEGIN_WRITE, ZIP_SOURCE_WRITE, ZIP_SOURCE_COMMIT_WRITE,
            ZIP_SOURCE_ROLLBACK_WRITE, ZIP_SOURCE_SEEK_WRITE, ZIP_SOURCE_TELL_WRITE, ZIP_SOURCE_REMOVE, -1);
    case ZIP_SOURCE_BEGIN_WRITE:
        target.content.clear();
        target.at = 0;
        return 0;
    case ZIP_SOURCE_WRITE:
        return target.write(data, length);
    case ZIP_SOURCE_SEEK:
    case ZIP_SOURCE_SEEK_WRITE:
        return target.seek(data, length);
    case ZIP_SOURCE_TELL:
    case ZIP_SOURCE_TELL_WRITE:
        return static_cast<zip_int64_t>(target.at);
    case ZIP_SOURCE_STAT:
        return target.stat(data);
    case ZIP_SOURCE_ERROR:
        return zip_error_to_data(&target.error, data, length);
    default:
        return 0; // there is nothing to open, close or free, and the library reads nothing back
    }
}

/// The content of a file that the library packs, and how far it has read.
struct Reading {
    const ZipContent& content;
    std::size_t at = 0;
};

zip_int64_t give(void* user, void* data, zip_uint64_t length, zip_source_cmd_t command) {
    Reading& reading = *static_cast<Reading*>(user);
    switch (command) {
    case ZIP_SOURCE_SUPPORTS:
        return zip_source_make_command_bitmap(ZIP_SOURCE_OPEN, ZIP_SOURCE_READ, ZIP_SOURCE_CLOSE, ZIP_SOURCE_STAT,
                                              ZIP_SOURCE_ERROR, ZIP_SOURCE_FREE, -1);
    case ZIP_SOURCE_OPEN:
        reading.at = 0;
        return 0;
    case ZIP_SOURCE_READ: {
        const std::size_t count = std::min<std::size_t>(length, reading.content.size - reading.at);
        if (count > 0) {
            reading.content.make(static_cast<char*>(data), reading.at, count);
        }
        reading.at += count;
        return static_cast<zip_int64_t>(count);
    }
    case ZIP_SOURCE_STAT: {
        auto* const about = static_cast<zip_stat_t*>(data);
        zip_stat_init(about);
        about->size = reading.content.size;
        about->valid |= ZIP_STAT_SIZE;
        return sizeof(zip_stat_t);
    }
    case ZIP_SOURCE_ERROR: {
        zip_error_t none;
        zip_error_init(&none);
        return zip_error_to_data(&none, data, length);
    }
    default:
        return 0; // there is nothing to close or free
    }
}

} // namespace

ZipContent ZipContent::of(std::string_view text) {
    return {text.size(),
            [text](char* to, std::size_t from, std::size_t count) { std::memcpy(to, text.data() + from, count); }};
}

std::optional<std::string> ZipArchive::file() const {
    zip_error_t error;
    zip_error_init(&error);
    Target target;
    std::size_t size = 0;
    for (const Entry& entry : m_entries) {
        size += entry.content.size + 2 * (entry.name.size() + kRoomForHeads);
    }
    target.content.reserve(size);
    zip_source_t* const source = zip_source_function_create(serve, &target, &error);
    zip_t* const archive = source == nullptr ? nullptr : zip_open_from_source(source, ZIP_TRUNCATE, &error);
    if (archive == nullptr) {
        zip_source_free(source);
        return std::nullopt;
    }
    bool added = true;
    std::deque<Reading> readings; // a deque, since the library keeps pointers to its elements
    for (const Entry& entry : m_entries) {
        zip_source_t* const bytes = zip_source_function(archive, give, &readings.emplace_back(Reading{entry.content}));
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
    return std::move(target.content);
}

} // namespace sixtrace
