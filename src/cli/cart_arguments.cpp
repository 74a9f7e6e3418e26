#include "cli/cart_arguments.h"

#include <string>

#include "builder/carts/cart_compare.h"

namespace bw {
namespace {

CommandOptions AddCommand(const CommandOptions& program, const std::string& name, TextId help,
                          Command command, Arguments& arguments) {
    const CommandOptions added = program.Add(name, help);
    added.Command().callback([&arguments, command] { arguments.command = command; });
    added.Flag("-q,--quiet", arguments.quiet, TextId::kHelpQuiet);
    added.Flag("-v,--verbose", arguments.verbose, TextId::kHelpVerbose);
    added.Path("CART", arguments.cart, TextId::kHelpCart, "FILE")->required();
    return added;
}

}  // namespace

void AddCartCommands(const CommandOptions& program, Arguments& arguments) {
    const CommandOptions split =
        AddCommand(program, "split", TextId::kHelpSplit, Command::kSplit, arguments);
    split.Path("-d,--directory", arguments.folder, TextId::kHelpSplitFolder, "FOLDER")->required();

    const CommandOptions compare =
        AddCommand(program, "compare", TextId::kHelpCompare, Command::kCompare, arguments);
    compare.Path("DUMP", arguments.dump, TextId::kHelpDump, "FILE")->required();
    std::vector<std::string> sizes;
    for (const uint32_t size : kSectorSizes)
        sizes.push_back(std::to_string(size));
    compare.Choice("--sector", arguments.sectorSize, sizes, TextId::kHelpSector);
    compare.Flag("--json", arguments.json, TextId::kHelpJson);
}

}  // namespace bw
