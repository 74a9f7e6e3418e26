#include "update/update_outcome.h"

#include "language/problem_text.h"

namespace bw {
namespace {

TextId SentenceOf(UpdateOutcome::Kind kind) {
    using enum UpdateOutcome::Kind;
    switch (kind) {
        case kDone:
        case kStopped:
        case kNoAddress:
            break;
        case kBadVersion:
            return TextId::kUpdateBadVersion;
        case kNotNewer:
            return TextId::kUpdateNotNewer;
        case kBadAddress:
            return TextId::kUpdateBadAddress;
        case kNotSecure:
            return TextId::kUpdateNotSecure;
        case kNotOurs:
            return TextId::kUpdateNotOurs;
        case kReadOnly:
            return TextId::kUpdateReadOnly;
        case kChangedMeanwhile:
            return TextId::kUpdateChangedMeanwhile;
        case kNetwork:
            return TextId::kUpdateNetwork;
        case kTooLarge:
            return TextId::kUpdateTooLarge;
        case kFile:
            return TextId::kUpdateFile;
        case kNoSignature:
            return TextId::kUpdateNoSignature;
        case kOtherKey:
            return TextId::kUpdateOtherKey;
        case kBadSignature:
            return TextId::kUpdateBadSignature;
        case kOtherProgram:
            return TextId::kUpdateOtherProgram;
    }
    return {};
}

}  // namespace

std::u16string UpdateOutcomeText(const UpdateOutcome& outcome, Language language) {
    const TextId sentence = SentenceOf(outcome.kind);
    if (sentence == TextId{}) return {};
    std::u16string text = LoadText(sentence, language);
    if (outcome.file) text += u" " + ProblemText(*outcome.file, language);
    return text;
}

}  // namespace bw
