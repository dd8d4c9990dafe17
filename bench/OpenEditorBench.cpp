#include "core/Limits.h"
#include "plugin/ThudForge.h"

#include <benchmark/benchmark.h>
#include <xcb/xcb.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdint>
#include <thread>
#include <vector>

// How late a block can be while the editor draws: a host plays at its own pace and automates every parameter
// before each block. Needs a display for the open editor: xvfb-run -a -s -noreset
// build/bench/bench/thudforge_bench

namespace {

using namespace Grimworks;
using Clock = std::chrono::steady_clock;

constexpr int kFrames = 64;
constexpr double kRate = 44100.0;
constexpr int kBlocks = 2000;
constexpr int kVoices = 8;

/// The display's root window, which takes an editor as any host's window does.
class RootWindow {
public:
    RootWindow() : connection(xcb_connect(nullptr, nullptr)) {
        if (xcb_connection_has_error(connection) != 0) return;
        root = xcb_setup_roots_iterator(xcb_get_setup(connection)).data->root;
    }
    ~RootWindow() { xcb_disconnect(connection); }
    RootWindow(const RootWindow&) = delete;
    RootWindow& operator=(const RootWindow&) = delete;

    [[nodiscard]] void* Handle() const {
        const auto number = static_cast<std::uintptr_t>(root);
        return reinterpret_cast<void*>(number); // NOLINT(performance-no-int-to-ptr)
    }
    [[nodiscard]] bool IsThere() const { return root != 0; }

private:
    xcb_connection_t* connection;
    xcb_window_t root = 0;
};

class AutomatingHost {
public:
    AutomatingHost() {
        Dispatch(PlugOp::Open);
        Dispatch(PlugOp::SetSampleRate, 0, nullptr, static_cast<float>(kRate));
        Dispatch(PlugOp::SetBlockSize, kFrames);
        Dispatch(PlugOp::MainsChanged, 1);
        for (int i = 0; i < kVoices; ++i)
            plug.ProcessMidiMsg({0, 144, static_cast<std::uint8_t>(36 + i), 100});
    }
    ~AutomatingHost() { Dispatch(PlugOp::EditClose); }
    AutomatingHost(const AutomatingHost&) = delete;
    AutomatingHost& operator=(const AutomatingHost&) = delete;

    bool OpenEditor(const RootWindow& parent, int page) {
        plug.SelectPage(page);
        return Dispatch(PlugOp::EditOpen, 0, parent.Handle()) == 1;
    }

    /// Moves every parameter but the on-off switch of the first oscillator a little, then renders one block.
    void Block(int number) {
        AEffect* const effect = plug.Effect();
        for (int id = 1; id < kParameters; ++id) {
            const float before = effect->getParameter(effect, id);
            effect->setParameter(effect, id,
                                 number % 2 == 0 ? before * 0.999F : std::min(before * 1.001F, 1.0F));
        }
        std::array<double*, 2> outputs{left.data(), right.data()};
        effect->processDoubleReplacing(effect, nullptr, outputs.data(), kFrames);
    }

private:
    std::intptr_t Dispatch(std::int32_t opcode, std::intptr_t value = 0, void* ptr = nullptr,
                           float opt = 0.0F) {
        return plug.Effect()->dispatcher(plug.Effect(), opcode, 0, value, ptr, opt);
    }

    ThudForge plug{nullptr};
    std::array<double, kFrames> left{};
    std::array<double, kFrames> right{};
};

/// Argument: -1 without an editor, else the page of the open editor.
void BlocksWhileTheEditorDraws(benchmark::State& state) {
    const auto page = static_cast<int>(state.range(0));
    const RootWindow parent;
    AutomatingHost host;
    if (page >= 0 && !(parent.IsThere() && host.OpenEditor(parent, page))) {
        state.SkipWithError("the editor does not open; is there a display?");
        return;
    }
    std::vector<double> microseconds;
    microseconds.reserve(kBlocks);
    const auto period =
        std::chrono::duration_cast<Clock::duration>(std::chrono::duration<double>(kFrames / kRate));
    auto due = Clock::now();
    for (auto _ : state) {
        due += period;
        std::this_thread::sleep_until(due);
        const auto start = Clock::now();
        host.Block(static_cast<int>(microseconds.size()));
        const std::chrono::duration<double, std::micro> taken = Clock::now() - start;
        microseconds.push_back(taken.count());
        state.SetIterationTime(taken.count() * 1e-6);
    }
    std::sort(microseconds.begin(), microseconds.end());
    state.counters["median_us"] = microseconds[microseconds.size() / 2];
    state.counters["p999_us"] = microseconds[microseconds.size() * 999 / 1000];
    state.counters["worst_us"] = microseconds.back();
}
BENCHMARK(BlocksWhileTheEditorDraws)->Arg(-1)->Arg(0)->Arg(1)->Iterations(kBlocks)->UseManualTime();

} // namespace
