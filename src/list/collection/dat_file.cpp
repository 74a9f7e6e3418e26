#include "list/collection/dat_file.h"

#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "language/problem_text.h"
#include "list/collection/dat_collector.h"
#include "support/files.h"
#include "support/text.h"

namespace bw {
namespace {

constexpr size_t kPiece = 256 << 10;  // bytes
constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

// Of the form that the file's start shows. XML may come in UTF-16. Nothing for blanks alone.
std::unique_ptr<DatReader> ReaderFor(std::string_view start, DatCollector& collector) {
    if (start.starts_with("\xFF\xFE") || start.starts_with("\xFE\xFF")) {
        return MakeDatXmlReader(collector);
    }
    const size_t first = start.find_first_not_of(" \t\r\n");
    if (first == start.npos) return nullptr;
    return start[first] == '<' ? MakeDatXmlReader(collector) : MakeDatTextReader(collector);
}

}  // namespace

Result<DatNames, DatProblem> ReadDat(const std::filesystem::path& file,
                                     const std::unordered_set<uint32_t>& wanted,
                                     const DatProgress& progress) {
    const auto problem = [](FileProblem fault) {
        return DatProblem{.kind = DatProblem::Kind::kFile, .file = std::move(fault)};
    };
    if (const FileResult<> regular = CheckRegularFile(file); !regular) {
        return problem(regular.Problem());
    }
    const FileResult<File> opened = File::OpenForReading(file);
    if (!opened) return problem(opened.Problem());
    const uint64_t total = opened->Size().ValueOr(0);

    DatCollector collector(wanted);
    std::unique_ptr<DatReader> reader;
    std::vector<char> buffer(kPiece);
    for (uint64_t done = 0;;) {
        const std::span bytes(reinterpret_cast<uint8_t*>(buffer.data()), buffer.size());
        const FileResult<size_t> arrived = opened->ReadAt(done, bytes);
        if (!arrived && !reader) return problem(arrived.Problem());
        if (!arrived) return DatProblem{DatProblem::Kind::kDamaged, {}, reader->Line()};
        std::string_view piece(buffer.data(), *arrived);
        if (!reader) {
            if (piece.starts_with(kByteOrderMark)) piece.remove_prefix(kByteOrderMark.size());
            reader = ReaderFor(piece, collector);
            if (!reader) return DatProblem{.kind = DatProblem::Kind::kNoDatabase};
        }
        const bool last = *arrived < buffer.size();
        if (const auto fault = reader->Feed(piece, last)) return *fault;
        done += *arrived;
        if (last || (progress && !progress(done, total))) return collector.Take();
    }
}

std::u16string DatProblemText(const DatProblem& problem, const std::filesystem::path& file,
                              Language language) {
    const std::u16string shown = VisibleText(PathText(file));
    switch (problem.kind) {
        case DatProblem::Kind::kFile:
            break;
        case DatProblem::Kind::kNoDatabase:
            return FormatText(LoadText(TextId::kNoNameDatabase, language), shown);
        case DatProblem::Kind::kDamaged:
            return FormatText(LoadText(TextId::kNameDatabaseDamaged, language), shown,
                              problem.line);
    }
    return ProblemText(problem.file, language);
}

}  // namespace bw
