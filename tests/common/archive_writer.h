// Archives made for tests: of every kind that libarchive writes, and RAR.
#pragma once

#include <cstdint>
#include <filesystem>
#include <memory>
#include <span>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include <archive.h>
#include <archive_entry.h>

#include "common/game_image.h"
#include "rom/crc32.h"

namespace bw::test {

struct ArchiveMember {
    std::string name;
    std::string bytes;
    std::string symlink = {};
    std::string hardlink = {};
};

// Little end first.
inline std::string Bytes(uint64_t value, size_t count) {
    std::string bytes;
    for (size_t i = 0; i < count; ++i)
        bytes += static_cast<char>(value >> (8 * i) & 0xFF);
    return bytes;
}

inline uint32_t CrcOf(std::string_view bytes) {
    return Crc32({reinterpret_cast<const uint8_t*>(bytes.data()), bytes.size()});
}

// Stored members only. Source: "RAR version 4.x technical information", the format's own notes
// (technote.txt, rarlab.com).
inline void WriteRar(const std::filesystem::path& file, std::span<const ArchiveMember> members) {
    const auto block = [](int type, uint32_t flags, const std::string& rest) {
        std::string head(1, static_cast<char>(type));
        head += Bytes(flags, 2) + Bytes(rest.size() + 7, 2) + rest;
        return Bytes(CrcOf(head) & 0xFFFF, 2) + head;
    };
    std::string rar("Rar!\x1A\x07\0", 7);
    rar += block(0x73, 0, std::string(6, '\0'));
    for (const ArchiveMember& member : members) {
        const std::string size = Bytes(member.bytes.size(), 4);
        const std::string unixHost("\3");
        rar +=
            block(0x74, 0x8000,
                  size + size + unixHost + Bytes(CrcOf(member.bytes), 4) + Bytes(0, 4) +
                      "\x14\x30" + Bytes(member.name.size(), 2) + Bytes(0100644, 4) + member.name) +
            member.bytes;
    }
    WriteText(file, rar + block(0x7B, 0x4000, ""));
}

// The kind goes by the name. `options`: of libarchive's writers. An exception where it can't.
inline void WriteArchive(const std::filesystem::path& file, std::span<const ArchiveMember> members,
                         const char* options = nullptr) {
    const std::string name = file.filename().string();
    if (name.ends_with(".rar")) return WriteRar(file, members);
    const auto check = [](int status) {
        if (status < ARCHIVE_WARN) throw std::runtime_error("archive not written");
    };
    const std::unique_ptr<archive, int (*)(archive*)> out(archive_write_new(), archive_write_free);
    const auto has = [&](std::string_view part) { return name.find(part) != name.npos; };
    check(has(".zip")              ? archive_write_set_format_zip(out.get())
          : has(".7z")             ? archive_write_set_format_7zip(out.get())
          : has(".gnu")            ? archive_write_set_format_gnutar(out.get())
          : has(".t") || has(".T") ? archive_write_set_format_pax_restricted(out.get())
                                   : archive_write_set_format_raw(out.get()));
    if (has("gz")) check(archive_write_add_filter_gzip(out.get()));
    if (has("bz2")) check(archive_write_add_filter_bzip2(out.get()));
    if (has("xz")) check(archive_write_add_filter_xz(out.get()));
    if (has("zst")) check(archive_write_add_filter_zstd(out.get()));
    if (options != nullptr) {
        check(archive_write_set_options(out.get(), options));
        check(archive_write_set_passphrase(out.get(), "secret"));
    }
    std::string bytes;
    const auto append = [](archive*, void* to, const void* data, size_t size) {
        static_cast<std::string*>(to)->append(static_cast<const char*>(data), size);
        return static_cast<la_ssize_t>(size);
    };
    check(archive_write_set_bytes_in_last_block(out.get(), 1));
    check(archive_write_open(out.get(), &bytes, nullptr, append, nullptr));
    const std::unique_ptr<archive_entry, void (*)(archive_entry*)> entry(archive_entry_new(),
                                                                         archive_entry_free);
    for (const ArchiveMember& member : members) {
        archive_entry_clear(entry.get());
        archive_entry_set_pathname(entry.get(), member.name.c_str());
        archive_entry_set_filetype(entry.get(), member.symlink.empty() ? AE_IFREG : AE_IFLNK);
        archive_entry_set_perm(entry.get(), 0644);
        archive_entry_set_size(entry.get(), static_cast<la_int64_t>(member.bytes.size()));
        if (!member.symlink.empty()) {
            archive_entry_set_symlink(entry.get(), member.symlink.c_str());
        }
        if (!member.hardlink.empty()) {
            archive_entry_set_hardlink(entry.get(), member.hardlink.c_str());
        }
        check(archive_write_header(out.get(), entry.get()));
        const auto written =
            archive_write_data(out.get(), member.bytes.data(), member.bytes.size());
        if (written < 0) throw std::runtime_error("archive not written");
    }
    check(archive_write_close(out.get()));
    WriteText(file, bytes);
}

}  // namespace bw::test
