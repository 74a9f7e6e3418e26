// The window program with a deployment of the test's own, which the last line of its own file
// names: "test-deployment HOST KEY VERSION". A copy with another line is another version of the
// program.
#include <fstream>
#include <iterator>
#include <sstream>
#include <string>

#include "app/window_program.h"
#include "support/paths.h"

namespace {

bw::Deployment DeploymentOf(const std::filesystem::path& program) {
    constexpr std::streamoff kTail = 1024;  // bytes that hold the line
    std::ifstream file(program, std::ios::binary);
    file.seekg(-kTail, std::ios::end);
    const std::string tail{std::istreambuf_iterator<char>(file), {}};
    const size_t line = tail.rfind("\ntest-deployment ");
    if (line == std::string::npos) return {};
    std::istringstream words(tail.substr(line));
    std::string name;
    bw::Deployment deployment;
    words >> name >> deployment.host >> deployment.key >> deployment.version;
    return deployment;
}

}  // namespace

int main(int count, char** values) {
    return bw::RunWindowProgram(count, values, DeploymentOf(bw::ExecutablePath()));
}
