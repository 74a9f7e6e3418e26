// An emulator with nothing behind it: it counts what it is asked for, and fails when it is told to.
#pragma once

#include <atomic>
#include <mutex>
#include <optional>
#include <thread>
#include <vector>

#include "console/emulator.h"

class FakeEmulator : public bw::Emulator {
  public:
    std::string Name() const override { return "Fake 1.0"; }
    bw::ConsoleResult<std::unique_ptr<bw::Console>> Start(
        const bw::ConsoleStart& start) const override {
        if (startProblem) return bw::ConsoleProblem{*startProblem, "why"};
        ++starts;
        return std::unique_ptr<bw::Console>(std::make_unique<FakeConsole>(*this, start));
    }

    std::optional<bw::ConsoleProblem::Kind> startProblem;
    mutable std::atomic<std::optional<bw::ConsoleProblem::Kind>> runProblem;  // of the next order
    std::atomic<bool> hangs = false;  // until the start's token stops it
    mutable std::atomic<int> starts, living, frames, rests, resets, powers, loads;
    // The pads of each frame that was run, newest last.
    std::vector<bw::PadStates> Pads() const {
        const std::lock_guard guard(lock_);
        return pads_;
    }

  private:
    class FakeConsole : public bw::Console {
      public:
        FakeConsole(const FakeEmulator& emulator, const bw::ConsoleStart& start)
            : emulator_(emulator), stop_(start.stop) {
            ++emulator_.living;
        }
        ~FakeConsole() override { --emulator_.living; }

        // Its pictures tell the number of the frame in every pixel.
        bw::ConsoleResult<bw::ConsoleRun> Run(const bw::ConsoleOrder& order) override {
            if (const auto problem = emulator_.runProblem.exchange(std::nullopt))
                return bw::ConsoleProblem{*problem, "why"};
            while (emulator_.hangs && !stop_.stop_requested())
                std::this_thread::sleep_for(std::chrono::milliseconds(1));
            if (stop_.stop_requested())
                return bw::ConsoleProblem{bw::ConsoleProblem::Kind::kStopped, ""};
            bw::ConsoleRun run{.frames = order.frames};
            const int number = emulator_.frames += static_cast<int>(order.frames);
            if (order.picture)
                run.picture.pixels.assign(256 * 240, 0xFF000000 + static_cast<uint32_t>(number));
            const std::lock_guard guard(emulator_.lock_);
            emulator_.pads_.push_back(order.pads);
            return run;
        }
        bw::ConsoleResult<std::vector<uint8_t>> ReadCpu(uint16_t, uint32_t count) override {
            return std::vector<uint8_t>(count);
        }
        bw::ConsoleResult<std::vector<uint8_t>> ReadPpu(uint16_t, uint32_t count) override {
            return std::vector<uint8_t>(count);
        }
        bw::ConsoleResult<> WriteCpu(uint16_t, const std::vector<uint8_t>&) override { return {}; }
        bw::ConsoleResult<> KeepState() override { return {}; }
        bw::ConsoleResult<> RestoreState() override { return {}; }
        bw::ConsoleResult<> Load(const std::filesystem::path&) override {
            return Count(emulator_.loads);
        }
        bw::ConsoleResult<> Power() override { return Count(emulator_.powers); }
        bw::ConsoleResult<> Reset() override { return Count(emulator_.resets); }
        void Rest() override { ++emulator_.rests; }
        int64_t ProcessId() const override { return 0; }

      private:
        static bw::ConsoleResult<> Count(std::atomic<int>& what) {
            ++what;
            return {};
        }

        const FakeEmulator& emulator_;
        std::stop_token stop_;
    };

    mutable std::mutex lock_;
    mutable std::vector<bw::PadStates> pads_;
};
