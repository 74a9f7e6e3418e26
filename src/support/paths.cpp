#include "support/paths.h"

#include "support/text.h"

namespace bw {
namespace {

namespace fs = std::filesystem;

constexpr std::u16string_view kSeparators = fs::path::preferred_separator == '\\' ? u"\\/" : u"/";

std::u16string_view FileName(std::u16string_view path) {
    const size_t separator = path.find_last_of(kSeparators);
    return separator == path.npos ? path : path.substr(separator + 1);
}

}  // namespace

fs::path ExecutableFolder() {
    return ExecutablePath().parent_path();
}

std::u16string NameWithoutExtension(std::u16string_view path) {
    const std::u16string_view name = FileName(path);
    return std::u16string(name.substr(0, name.rfind(u'.')));
}

fs::path AbsolutePath(const fs::path& path, const fs::path& base) {
    return (base / path).lexically_normal();
}

fs::path RelativePath(const fs::path& path, const fs::path& base) {
    fs::path relative = path.lexically_normal().lexically_relative(base.lexically_normal());
    return relative.empty() ? path : relative;
}

bool HasExtension(const fs::path& path, std::string_view extension) {
    const std::u16string text = PathText(path);
    const std::u16string_view name = FileName(text);
    const size_t point = name.rfind(u'.');
    return point != name.npos && EqualIgnoringAsciiCase(name.substr(point + 1), ToWide(extension));
}

}  // namespace bw
