#include "shell/main/play_commands.h"

#include "rom/image_files.h"
#include "support/files.h"
#include "support/paths.h"
#include "support/text.h"

namespace bw {

void PlayCommands::PlayGame() {
    const size_t row = host_.Editor().FindRow();
    if (row >= host_.Editor().Games().size()) return;
    const GameEntry& entry = host_.Editor().Games()[row];
    Play(AbsolutePath(TextPath(entry.path), host_.Base()), entry.name);
}

void PlayCommands::PlayCart(const std::optional<BuiltCart>& cart) {
    if (!cart) return host_.Tell(LoadText(TextId::kPlayNoCart, host_.CurrentLanguage()));
    Play(cart->file, PathText(cart->file.stem()));
}

void PlayCommands::Play(const std::filesystem::path& rom, std::u16string_view name) {
    if (!CheckRegularFile(ContainerOf(rom))) {
        return host_.Tell(
            FormatText(LoadText(TextId::kPlayNoFile, host_.CurrentLanguage()), PathText(rom)));
    }
    if (!dialog_) {
        dialog_ = std::make_unique<CPlayDialog>(host_.Store(), host_.Dialogs(), &FindEmulator,
                                                host_.CurrentLanguage(), &window_);
    }
    dialog_->Play(rom, name);
}

}  // namespace bw
