#include <cctype>
#include <fstream>
#include <iterator>
#include <regex>
#include <string>

#include <gtest/gtest.h>

#include "assembler/keywords.h"
#include "nesasm/command_line.h"

// The manual must name every option and every directive that there is.

namespace bw {
namespace {

std::string Manual() {
    std::ifstream file(BANKWEAVER_DOCS "/assembler.md");
    return {std::istreambuf_iterator<char>(file), {}};
}

TEST(Manual, HasEveryOption) {
    const std::string manual = Manual();
    const std::string help = nesasm::HelpText();
    const std::regex option("-[a-z]\\b|--[a-z]+");
    int count = 0;
    for (std::sregex_iterator it(help.begin(), help.end(), option), end; it != end; ++it) {
        EXPECT_NE(manual.find(std::string("`").append(it->str())), std::string::npos) << it->str();
        ++count;
    }
    EXPECT_GE(count, 9);
}

TEST(Manual, HasEveryDirective) {
    const std::string manual = Manual();
    EXPECT_GE(assembler::DirectiveNames().size(), 25U);
    for (const std::string_view name : assembler::DirectiveNames()) {
        EXPECT_TRUE(std::regex_search(manual, std::regex("\\." + std::string(name) + "\\b")))
            << name;
    }
}

}  // namespace
}  // namespace bw
