#include "common/child_process.h"

#include "common/game_image.h"
#include "common/temporary_folder.h"

namespace bw::test {

ProgramRun RunProgram(ChildCommand command) {
    const TemporaryFolder folder;
    command.logFile = folder / "out";
    command.errorFile = folder / "err";
    ProgramRun run;
    if (auto child = ChildProcess::Start(command);
        child && child->WaitFor(std::chrono::minutes(10)))
        run.status = child->Status();
    run.out = ReadText(command.logFile);
    run.err = ReadText(command.errorFile);
    return run;
}

}  // namespace bw::test
