#include "update/program_file.h"

#include <algorithm>
#include <system_error>

#include "support/text.h"

namespace bw {
namespace {

std::filesystem::path WithoutLinks(const std::filesystem::path& path) {
    std::error_code error;
    const std::filesystem::path file = std::filesystem::canonical(path, error);
    return error ? path : file;
}

}  // namespace

ProgramFile::ProgramFile(const std::filesystem::path& path)
    : path_(WithoutLinks(path)), identity_(IdentityOf(path_)) {}

std::filesystem::path ProgramFile::DownloadTarget(std::u16string_view version) const {
    const bool plain = !version.empty() && std::ranges::all_of(version, [](char16_t unit) {
        return unit == u'.' || (unit >= u'0' && unit <= u'9');
    });
    if (!plain) return {};
    return Folder() / ("Bankweaver_" + ToUtf8(version) + ".exe");
}

std::filesystem::path ProgramFile::OldProgram() const {
    std::filesystem::path old = path_;
    return old += ".bak";
}

}  // namespace bw
