#include "console/live_session.h"

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <mutex>
#include <thread>
#include <utility>

namespace bw {
namespace {

using Clock = std::chrono::steady_clock;
using std::chrono::milliseconds;

constexpr Clock::duration kFrameTime = std::chrono::duration_cast<Clock::duration>(
    std::chrono::duration<double>(1 / kFramesPerSecond));
// A frame is begun so long before its picture is due: an emulator that is held up for less is still
// in time, and a key is never older than that.
constexpr Clock::duration kLead = milliseconds(8);
constexpr Clock::duration kLate = milliseconds(4);
// What two clocks may differ by before they are set alike.
constexpr Clock::duration kSlack = milliseconds(1);
// A session that is further behind doesn't catch up any more.
constexpr Clock::duration kLongestDebt = 4 * kFrameTime;
// Few enough that orders are heard at once.
constexpr uint32_t kFastFrames = 4;
// What an emulator that hangs has to answer when the session ends, before it is killed.
constexpr milliseconds kLastPatience{500};

struct LoadOrder {
    std::filesystem::path rom;
    LiveSession::Prepare prepare;
    LiveSession::Prepare leave{};
};

// What the session is to do; the owner writes it, the thread takes it.
struct Orders {
    PadStates held{};
    PadStates pressed{};  // since the last frame, even if only for a moment
    bool paused = false;
    bool fast = false;
    bool silent = false;
    bool reset = false;
    bool power = false;
    bool end = false;
    uint32_t steps = 0;
    std::optional<LoadOrder> load{};
};

// One round of the thread.
struct Turn {
    PadStates buttons{};
    bool reset = false;
    bool power = false;
    bool fast = false;
    bool step = false;
    bool silent = false;
    std::optional<LoadOrder> load{};
};

}  // namespace

class LiveSession::Thread {
  public:
    Thread(const Emulator& emulator, LiveWatcher& watcher, LiveOptions options, Prepare prepare)
        : emulator_(emulator), watcher_(watcher), options_(std::move(options)) {
        orders_.load = LoadOrder{options_.rom, std::move(prepare)};
        thread_ = std::thread([this] { Live(); });
    }
    Thread(const Thread&) = delete;
    Thread& operator=(const Thread&) = delete;
    ~Thread();

    template <typename Change>
    void Order(Change change) {
        const std::lock_guard guard(lock_);
        change(orders_);
        wake_.notify_one();
    }
    void SetPads(PadStates pads);
    Figures Measured() const { return {frames_, late_}; }

  private:
    void Live();
    std::optional<Turn> NextTurn();
    std::optional<Turn> TakeTurn(const std::unique_lock<std::mutex>& held);
    Clock::time_point Beginning() const;
    bool Ending();
    void Load(const LoadOrder& order);
    ConsoleResult<> SwitchOn(const LoadOrder& order);
    void RunTurn(const Turn& turn);
    ConsoleResult<> RunFast(const Turn& turn);
    void Show(ConsoleResult<ConsoleRun> run, const Turn& turn);
    void Fail(const ConsoleProblem& problem);

    const Emulator& emulator_;
    LiveWatcher& watcher_;
    const LiveOptions options_;
    std::mutex lock_;
    std::condition_variable wake_;
    Orders orders_;         // under the lock
    bool starting_ = true;  // under the lock: nothing of the console's is worth keeping yet
    bool ended_ = false;    // under the lock: no order runs any more
    std::stop_source giveUp_;
    std::atomic<uint64_t> frames_ = 0;
    std::atomic<uint64_t> late_ = 0;
    // The thread's own.
    std::unique_ptr<Console> console_;
    bool running_ = false;  // the console has a ROM that it can run
    bool resting_ = false;
    Clock::time_point due_{};  // of the next picture
    std::thread thread_;       // last: what it uses is there
};

// A console that ends in order writes its save, so it gets the time to.
LiveSession::Thread::~Thread() {
    std::unique_lock held(lock_);
    orders_.end = true;
    wake_.notify_one();
    if (starting_ || !wake_.wait_for(held, kLastPatience, [this] { return ended_; })) {
        giveUp_.request_stop();
    }
    held.unlock();
    thread_.join();
}

void LiveSession::Thread::SetPads(PadStates pads) {
    const std::lock_guard guard(lock_);
    orders_.held = pads;
    for (size_t i = 0; i < pads.size(); ++i)
        orders_.pressed[i] |= pads[i];
}

void LiveSession::Thread::Live() {
    while (auto turn = NextTurn()) {
        if (turn->load) {
            Load(*turn->load);
        } else {
            RunTurn(*turn);
        }
    }
    {
        const std::lock_guard guard(lock_);
        ended_ = true;
        wake_.notify_one();
    }
    console_.reset();
}

std::optional<Turn> LiveSession::Thread::NextTurn() {
    std::unique_lock held(lock_);
    while (!orders_.end) {
        const bool waits = !running_ || (orders_.paused && orders_.steps == 0);
        if (orders_.load || (!waits && (orders_.paused || orders_.fast))) return TakeTurn(held);
        if (waits) {
            if (console_ && !std::exchange(resting_, true)) console_->Rest();
            orders_.pressed = {};
            wake_.wait(held);
            due_ = Clock::now();
        } else if (const auto begin = Beginning(); Clock::now() >= begin) {
            return TakeTurn(held);
        } else {
            wake_.wait_until(held, begin);
        }
    }
    return std::nullopt;
}

// Under the lock. An emulator that plays its sound waits for its own moment.
Clock::time_point LiveSession::Thread::Beginning() const {
    return due_ - (options_.sound && !orders_.silent ? kFrameTime : kLead);
}

std::optional<Turn> LiveSession::Thread::TakeTurn(const std::unique_lock<std::mutex>&) {
    Turn turn;
    if (orders_.load) {
        turn.load = std::exchange(orders_.load, std::nullopt);
        return turn;
    }
    for (size_t i = 0; i < turn.buttons.size(); ++i)
        turn.buttons[i] = orders_.held[i] | std::exchange(orders_.pressed[i], uint8_t{0});
    turn.reset = std::exchange(orders_.reset, false);
    turn.power = std::exchange(orders_.power, false);
    turn.step = orders_.paused;
    turn.fast = orders_.fast && !turn.step;
    turn.silent = orders_.silent || turn.fast || turn.step || !options_.sound;
    if (turn.step) --orders_.steps;
    return turn;
}

bool LiveSession::Thread::Ending() {
    const std::lock_guard guard(lock_);
    return orders_.end;
}

ConsoleResult<> LiveSession::Thread::SwitchOn(const LoadOrder& order) {
    if (!console_) {
        auto started = emulator_.Start({.rom = order.rom,
                                        .save = options_.save,
                                        .sound = options_.sound,
                                        .stop = giveUp_.get_token()});
        if (!started) return started.Problem();
        console_ = std::move(*started);
    } else {
        ConsoleResult<> done = order.leave ? order.leave(*console_) : ConsoleResult<>();
        if (done) done = console_->Load(order.rom);
        if (!done) return done;
    }
    return order.prepare ? order.prepare(*console_) : ConsoleResult<>();
}

void LiveSession::Thread::Load(const LoadOrder& order) {
    running_ = false;
    resting_ = false;
    if (const auto on = SwitchOn(order); !on) return Fail(on.Problem());
    running_ = true;
    {
        const std::lock_guard guard(lock_);
        starting_ = false;
        orders_.steps = 0;
        orders_.reset = orders_.power = false;
        if (orders_.load) return;  // nobody waits for this one any more
    }
    // Also while it pauses: whoever watches is to see what was loaded.
    Show(console_->Run({.picture = true, .silent = true}), {.step = true});
    due_ = Clock::now() + kFrameTime;
}

void LiveSession::Thread::RunTurn(const Turn& turn) {
    resting_ = false;
    ConsoleResult<> done;
    if (turn.power) done = console_->Power();
    if (done && turn.reset) done = console_->Reset();
    if (done && turn.fast) done = RunFast(turn);
    if (!done) return Fail(done.Problem());
    Show(console_->Run({.pads = turn.buttons, .picture = true, .silent = turn.silent}), turn);
}

// Up to the time of the next picture.
ConsoleResult<> LiveSession::Thread::RunFast(const Turn& turn) {
    while (Clock::now() < due_ && !Ending()) {
        const auto run =
            console_->Run({.frames = kFastFrames, .pads = turn.buttons, .silent = true});
        if (!run) return run.Problem();
    }
    return {};
}

void LiveSession::Thread::Show(ConsoleResult<ConsoleRun> run, const Turn& turn) {
    if (!run) return Fail(run.Problem());
    if (!turn.step) {
        std::this_thread::sleep_until(due_);
        const Clock::duration behind = Clock::now() - due_;
        if (behind > kLate && !turn.fast) ++late_;
        // With sound the emulator keeps the pace, and what comes next is due by its clock.
        const bool forgiven = behind > kLongestDebt || (!turn.silent && behind > kSlack);
        due_ = (forgiven ? Clock::now() : due_) + kFrameTime;
    }
    ++frames_;
    watcher_.Shows(run->picture, turn.buttons);
}

void LiveSession::Thread::Fail(const ConsoleProblem& problem) {
    running_ = false;
    console_.reset();
    if (!Ending()) watcher_.Failed(problem);
}

LiveSession::LiveSession(const Emulator& emulator, LiveWatcher& watcher, LiveOptions options,
                         Prepare prepare)
    : thread_(std::make_unique<Thread>(emulator, watcher, std::move(options), std::move(prepare))) {
}

LiveSession::~LiveSession() = default;

void LiveSession::SetPads(PadStates pads) {
    thread_->SetPads(pads);
}

void LiveSession::Pause(bool paused) {
    thread_->Order([=](Orders& orders) {
        orders.paused = paused;
        orders.steps = 0;
    });
}

void LiveSession::Step() {
    thread_->Order([](Orders& orders) {
        if (orders.paused) ++orders.steps;
    });
}

void LiveSession::FastForward(bool fast) {
    thread_->Order([=](Orders& orders) { orders.fast = fast; });
}

void LiveSession::Mute(bool muted) {
    thread_->Order([=](Orders& orders) { orders.silent = muted; });
}

void LiveSession::Reset() {
    thread_->Order([](Orders& orders) { orders.reset = true; });
}

void LiveSession::Power() {
    thread_->Order([](Orders& orders) { orders.power = true; });
}

void LiveSession::Load(std::filesystem::path rom, Prepare prepare, Prepare leave) {
    thread_->Order([&](Orders& orders) {
        orders.load = LoadOrder{std::move(rom), std::move(prepare), std::move(leave)};
    });
}

LiveSession::Figures LiveSession::Measured() const {
    return thread_->Measured();
}

}  // namespace bw
