#include "update/http_log.h"

#include <fmt/format.h>

#include "support/debug_output.h"

namespace bw {

void LogHttpError(std::string_view step, int code) {
    WriteDebugOutput(fmt::format("[Error] {} LastError[{}]\n", step, code));
}

void LogHttpWarning(std::string_view step, int code) {
    WriteDebugOutput(fmt::format("[Warn] {} LastError[{}]\n", step, code));
}

}  // namespace bw
