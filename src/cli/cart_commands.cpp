#include "cli/cart_commands.h"

#include <algorithm>

#include "builder/carts/cart_compare.h"
#include "builder/carts/cart_split.h"
#include "builder/tables/cart_file.h"
#include "cli/cart_report.h"
#include "cli/inputs.h"
#include "cli/report.h"
#include "cli/terminal_user.h"
#include "language/problem_text.h"
#include "support/paths.h"
#include "support/text.h"

namespace bw {
namespace {

constexpr int kDone = 0;
constexpr int kFailed = 1;
constexpr uint64_t kKilobyte = 1024;

class CartCommand {
  public:
    CartCommand(const Arguments& arguments, const std::filesystem::path& cart)
        : arguments_(arguments), user_(arguments, language_), cart_(FromCurrentFolder(cart)) {
        CancelOnEndRequest();
    }

    int List(const CartContents& cart) {
        if (!arguments_.output.empty()) {
            user_.Error(FormatText(Text(TextId::kCartIsNoList), NameOf(cart_)));
            return kFailed;
        }
        if (!Print(arguments_.json ? CartJson(cart, cart_) : CartTable(cart, language_)))
            return kFailed;
        user_.Note(FormatText(
            Text(TextId::kCartSummary), NameOf(cart_), BoardName(cart.tables.board),
            cart.games.size(), cart.tables.romBytes / kKilobyte,
            uint64_t{cart.tables.menuUnits} * kPrgUnit / kKilobyte, cart.tables.menuOffset));
        if (!cart.hasManifest) user_.Note(Text(TextId::kCartWithoutNotes));
        return kDone;
    }

    int Split() {
        const FileResult<CartContents> cart = Open();
        if (!cart) return kFailed;
        const std::filesystem::path folder = FromCurrentFolder(arguments_.folder);
        const FileResult<std::vector<SplitGame>> games =
            SplitCart(cart_, *cart, folder, [&](size_t done, size_t total) {
                user_.Progress(FormatText(Text(TextId::kSplitting), done + 1, total));
                return !user_.Cancelled();
            });
        if (!games) {
            user_.Error(ProblemText(games.Problem(), language_));
            return kFailed;
        }
        return TellSplit(*games, cart->games.size(), folder) ? kDone : kFailed;
    }

    int Compare() {
        const FileResult<CartContents> cart = Open();
        if (!cart) return kFailed;
        const std::filesystem::path dump = FromCurrentFolder(arguments_.dump);
        const uint32_t sectorBytes = arguments_.sectorSize * static_cast<uint32_t>(kKilobyte);
        const FileResult<CartComparison> comparison =
            CompareCart(cart_, *cart, dump, sectorBytes, [&](uint64_t done, uint64_t total) {
                user_.Progress(
                    FormatText(Text(TextId::kComparing), done / kKilobyte, total / kKilobyte));
                return !user_.Cancelled();
            });
        if (!comparison) {
            user_.Error(user_.Cancelled() ? Text(TextId::kCompareStopped)
                                          : NoCartText(comparison.Problem(), language_));
            return kFailed;
        }
        if (!Print(arguments_.json ? ComparisonJson(*comparison, *cart)
                                   : ComparisonTable(*comparison, *cart, language_))) {
            return kFailed;
        }
        TellComparison(*comparison, dump);
        return comparison->Same() ? kDone : kFailed;
    }

  private:
    std::u16string Text(TextId id) const { return LoadText(id, language_); }
    static std::u16string NameOf(const std::filesystem::path& file) {
        return VisibleText(PathText(file));
    }

    FileResult<CartContents> Open() {
        FileResult<CartContents> cart = ReadCartContents(cart_);
        if (!cart) user_.Error(NoCartText(cart.Problem(), language_));
        return cart;
    }

    bool Print(const std::string& text) {
        const FileResult<> printed = PrintOut(text);
        if (!printed) user_.Error(ProblemText(printed.Problem(), language_));
        return static_cast<bool>(printed);
    }

    // Whether all is as it should be.
    bool TellSplit(const std::vector<SplitGame>& games, size_t total,
                   const std::filesystem::path& folder) {
        size_t written = 0;
        size_t faults = 0;
        for (const SplitGame& game : games) {
            const std::u16string problem = SplitProblemText(game, language_);
            if (problem.empty()) {
                user_.Detail(FormatText(Text(TextId::kFileWritten), NameOf(game.file)));
            } else {
                user_.Error(problem);
                ++faults;
            }
            if (game.end <= SplitEnd::kNotKnown) ++written;
        }
        if (games.size() < total) {
            user_.Error(FormatText(Text(TextId::kSplitStopped), written, total));
            return false;
        }
        user_.Note(FormatText(Text(TextId::kSplitDone), NameOf(folder), written, total));
        const auto unproved = std::ranges::count(games, SplitEnd::kNotKnown, &SplitGame::end);
        if (unproved != 0) user_.Note(FormatText(Text(TextId::kSplitUnproved), unproved));
        return faults == 0;
    }

    void TellComparison(const CartComparison& comparison, const std::filesystem::path& dump) {
        if (comparison.Same()) {
            user_.Note(Text(TextId::kCartsAreSame));
        } else {
            user_.Note(FormatText(Text(TextId::kCartsDiffer), comparison.differing,
                                  comparison.sectors.size(), comparison.sectorsInAll,
                                  arguments_.sectorSize));
        }
        if (comparison.missingBytes != 0) {
            user_.Note(
                FormatText(Text(TextId::kDumpTooShort), NameOf(dump), comparison.missingBytes));
        }
        if (comparison.behindBytes != 0) {
            user_.Note(FormatText(
                Text(comparison.behindErased ? TextId::kErasedBehind : TextId::kOtherBehind),
                NameOf(dump), comparison.behindBytes));
        }
    }

    const Arguments& arguments_;
    Language language_ = SystemLanguage();
    TerminalUser user_;
    std::filesystem::path cart_;
};

}  // namespace

std::optional<int> ListCart(const Arguments& arguments) {
    if (arguments.inputs.size() != 1) return std::nullopt;
    const std::filesystem::path file = FromCurrentFolder(arguments.inputs.front());
    const FileResult<CartContents> cart = ReadCartContents(file);
    if (cart) return CartCommand(arguments, file).List(*cart);
    const bool named = HasExtension(file, "unf") || HasExtension(file, "bin") || IsForBoard(file);
    if (!named || cart.Problem().kind != FileProblem::Kind::kWrongKind) return std::nullopt;
    const Language language = SystemLanguage();
    TerminalUser(arguments, language).Error(NoCartText(cart.Problem(), language));
    return kFailed;
}

int SplitCartFile(const Arguments& arguments) {
    return CartCommand(arguments, arguments.cart).Split();
}

int CompareCartFiles(const Arguments& arguments) {
    return CartCommand(arguments, arguments.cart).Compare();
}

}  // namespace bw
