#include "console/emulator_words.h"

#include "console/emulator.h"
#include "support/text.h"

namespace bw {

std::u16string NoEmulatorText(Language language) {
    const std::u16string package = ToWide(kEmulatorPackage);
    return FormatText(LoadText(TextId::kNoEmulator, language), package, package);
}

}  // namespace bw
