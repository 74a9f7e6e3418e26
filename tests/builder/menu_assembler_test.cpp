#include "builder/menu_assembler.h"

#include <chrono>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "support/text.h"

namespace bw {
namespace {

using testing::HasSubstr;

std::string Failure(const std::filesystem::path& assembler, const std::filesystem::path& source) {
    const AssemblyOutcome outcome = RunAssembler(assembler, source, "/", Language::kEnglish);
    EXPECT_FALSE(outcome.done);
    return ToUtf8(outcome.output);
}

TEST(MenuAssembler, AnAssemblerThatCantDoItsWorkIsNamed) {
    EXPECT_THAT(Failure("/no/such/assembler", "menu.asm"),
                HasSubstr("/no/such/assembler can't be started"));
    EXPECT_THAT(Failure("/bin/false", "menu.asm"), HasSubstr("without a word (exit code 1)"));
}

TEST(MenuAssembler, AnAssemblerThatHangsIsStopped) {
    const auto start = std::chrono::steady_clock::now();
    EXPECT_THAT(Failure("/bin/sleep", "1000"), HasSubstr("no answer for 3 seconds"));
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(60));
}

}  // namespace
}  // namespace bw
