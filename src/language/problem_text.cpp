#include "language/problem_text.h"

#include "support/text.h"

namespace bw {
namespace {

std::u16string TooLarge(const FileProblem& problem, Language language) {
    if (problem.limit == 0) return LoadText(TextId::kFileTooLarge, language);
    return FormatText(LoadText(TextId::kFileOverLimit, language), problem.size, problem.limit);
}

std::u16string Reason(const FileProblem& problem, Language language) {
    using enum FileProblem::Kind;
    switch (problem.kind) {
        case kNotFound:
            return LoadText(TextId::kNoSuchFile, language);
        case kNoPermission:
            return LoadText(TextId::kNoPermission, language);
        case kIsFolder:
            return LoadText(TextId::kIsFolder, language);
        case kNotFolder:
            return LoadText(TextId::kIsNoFolder, language);
        case kNotRegular:
            return LoadText(TextId::kNotRegularFile, language);
        case kTooLarge:
            return TooLarge(problem, language);
        case kDiskFull:
            return LoadText(TextId::kDiskIsFull, language);
        case kReadOnly:
            return LoadText(TextId::kDiskReadOnly, language);
        case kNameTooLong:
            return LoadText(TextId::kFileNameTooLong, language);
        case kCutShort:
            return LoadText(TextId::kCutShort, language);
        case kWrongKind:
            return LoadText(TextId::kWrongKindOfFile, language);
        case kDamaged:
            return LoadText(TextId::kArchiveDamaged, language);
        case kEncrypted:
            return LoadText(TextId::kArchiveEncrypted, language);
        case kOther:
            break;
    }
    if (problem.system) return SystemMessage(problem.system);
    return LoadText(TextId::kCantBeReadOrWritten, language);
}

}  // namespace

Diagnostic FileDiagnostic(const FileProblem& problem, Language language, Severity severity) {
    return {severity, Reason(problem, language), {.file = VisibleText(PathText(problem.file))}};
}

std::u16string ProblemText(const FileProblem& problem, Language language) {
    return FullText(FileDiagnostic(problem, language));
}

}  // namespace bw
