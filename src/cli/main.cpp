#include <cstdio>

#include "cli/arguments.h"
#include "cli/commands.h"
#include "support/program_words.h"

int main(int count, char** values) {
    const bw::ParseResult parsed = bw::ParseArguments(bw::ProgramWords(count, values));
    if (!parsed.arguments) {
        std::fputs(parsed.text.c_str(), parsed.exitCode == 0 ? stdout : stderr);
        return parsed.exitCode;
    }
    return bw::Execute(*parsed.arguments);
}
