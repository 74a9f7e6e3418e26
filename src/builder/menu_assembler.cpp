#include "builder/menu_assembler.h"

#include <chrono>

#include "support/process.h"
#include "support/text.h"

namespace bw {
namespace {

using namespace std::chrono_literals;
constexpr auto kSilence = 3000ms;
constexpr auto kEnding = 500ms;  // from the end of its output to its own end

std::u16string FailureText(int status, const std::filesystem::path& assembler, Language language) {
    const bool chinese = language == Language::kChinese;
    if (status == Process::kStillRunning) {
        return FormatText(chinese ? u"汇编程序 %s 在 3 秒内没有响应，已终止。请重试。"
                                  : u"The assembler %s gave no answer for 3 seconds and was "
                                    u"stopped. Try again.",
                          PathText(assembler));
    }
    return FormatText(chinese ? u"汇编程序 %s 没有给出说明就失败了（退出码 %d）。"
                              : u"The assembler %s failed without a word (exit code %d).",
                      PathText(assembler), status);
}

}  // namespace

AssemblyOutcome RunAssembler(const std::filesystem::path& assembler,
                             const std::filesystem::path& source,
                             const std::filesystem::path& folder, Language language) {
    Process process;
    if (!process.Start(assembler, {source.string()}, folder)) {
        return {
            false,
            FormatText(language == Language::kChinese
                           ? u"无法启动汇编程序 %s。请检查磁盘空间以及该文件夹是否允许运行程序。"
                           : u"The assembler %s can't be started. Check that the disk "
                             u"has room and that programs may run in that folder.",
                       PathText(assembler))};
    }
    AssemblyOutcome outcome;
    outcome.output = ToWide(process.ReadOutput(kSilence));
    const int status = process.ExitStatus(kEnding);
    outcome.done = status == 0;
    if (!outcome.done && outcome.output.empty()) {
        outcome.output = FailureText(status, assembler, language);
    }
    return outcome;
}

}  // namespace bw
