#include "cli/list_command.h"

#include <algorithm>

#include "cli/cart_commands.h"
#include "cli/fitting.h"
#include "cli/game_command.h"
#include "cli/report.h"
#include "cli/written_files.h"
#include "list/list_file.h"
#include "support/paths.h"
#include "support/text.h"

namespace bw {
namespace {

class ImageInfo : GameCommand {
  public:
    explicit ImageInfo(const Arguments& arguments) : GameCommand(arguments) {}

    int Run() {
        if (arguments_.fit && !ReadSharedSums(gathered_.games, arguments_, false, user_)) {
            return kFailed;
        }
        return Done(PrintOut(Told())) && Gathered() ? kDone : kFailed;
    }

  private:
    std::string Told() const {
        const bool json = arguments_.json;
        if (arguments_.fit) {
            return json ? FitJson(Games(), arguments_) : FitTable(Games(), arguments_, language_);
        }
        if (arguments_.why)
            return json ? WhyJson(Games(), language_) : WhyTable(Games(), language_);
        return json ? InfoJson(Games(), language_) : InfoTable(Games(), language_);
    }
};

class GameListing : GameCommand {
  public:
    explicit GameListing(const Arguments& arguments) : GameCommand(arguments) {}

    int Run() {
        if (!Gathered() || !Collected() || !FitsBoard() || !Renamed(ConsoleMenu())) return kFailed;
        if (!arguments_.output.empty()) return CanBeKept() ? Save() : kFailed;
        return Print() ? kDone : kFailed;
    }

  private:
    bool Print() {
        return Done(PrintOut(arguments_.json ? ListJson(Games()) : ListTable(Games())));
    }

    int Save() {
        const std::filesystem::path file = ListFile(arguments_);
        if (!Done(SaveListFile(file, Games(), ExecutableFolder()))) return kFailed;
        user_.Note(
            FormatText(Text(TextId::kListWritten), VisibleText(PathText(file)), Games().size()));
        return !arguments_.json || Print() ? kDone : kFailed;
    }

    // A list file is UTF-8 with a line for each value: a line break, or a path of other bytes,
    // would come back as something else.
    bool CanBeKept() {
        const auto lost = [](const std::u16string& text) {
            return text.find_first_of(u"\r\n") != text.npos || ToWide(ToUtf8(text)) != text;
        };
        bool all = true;
        size_t number = 0;
        for (const GameEntry& game : Games()) {
            ++number;
            if (!lost(game.name) && !lost(game.remark) && !lost(game.path)) continue;
            user_.Error(FormatText(Text(TextId::kEntryCantBeKept), number, VisibleText(game.name),
                                   VisibleText(game.path)));
            all = false;
        }
        return all;
    }
};

}  // namespace

int TellOfImages(const Arguments& arguments) {
    return ImageInfo(arguments).Run();
}

int ListGames(const Arguments& arguments) {
    const std::optional<int> cart = ListCart(arguments);
    return cart ? *cart : GameListing(arguments).Run();
}

}  // namespace bw
