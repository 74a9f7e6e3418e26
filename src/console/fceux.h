// The emulator FCEUX, driven by a Lua script over two pipes. Facts about it: its manual's chapters
// "Command line options" and "Lua functions list", and what version 2.6 was seen to do.
#pragma once

#include <filesystem>

#include "console/emulator.h"
#include "console/fceux_program.h"
#include "support/file_problem.h"

namespace bw {

// What memory holds at power-on: zeros, so that runs repeat each other, or a pattern.
enum class FceuxMemory : uint8_t { kPattern = 0, kZeros = 2 };
// Makes an existing empty folder a home.
FileResult<> FillFceuxHome(const std::filesystem::path& home, FceuxMemory memory);

class Fceux final : public Emulator {
  public:
    // The emulator's file.
    explicit Fceux(std::filesystem::path program);

    // Asks the program.
    std::string Name() const override;
    ConsoleResult<std::unique_ptr<Console>> Start(const ConsoleStart& start) const override;

  private:
    std::filesystem::path program_;
};

}  // namespace bw
