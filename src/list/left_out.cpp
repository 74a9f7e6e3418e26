#include "list/left_out.h"

#include "support/text.h"

namespace bw {
namespace {

TextId Reason(LeftOut::Reason reason) {
    using enum LeftOut::Reason;
    switch (reason) {
        case kEncrypted:
            return TextId::kArchiveEncrypted;
        case kNested:
            return TextId::kArchiveNested;
        case kUnsafePath:
            return TextId::kArchiveUnsafePath;
        case kLink:
            return TextId::kArchiveLink;
        case kTooLarge:
            return TextId::kArchiveTooLarge;
        case kTooMany:
            return TextId::kArchiveTooMany;
        case kNoImages:
            return TextId::kArchiveNoImages;
        case kNoGame:
            return TextId::kArchiveNoGame;
        case kDamaged:
            break;
    }
    return TextId::kArchiveDamaged;
}

}  // namespace

Diagnostic LeftOutDiagnostic(const LeftOut& item, Language language) {
    return {Severity::kWarning,
            LoadText(Reason(item.reason), language),
            {.file = VisibleText(PathText(item.place))}};
}

std::u16string LeftOutText(const LeftOut& item, Language language) {
    return FullText(LeftOutDiagnostic(item, language));
}

}  // namespace bw
