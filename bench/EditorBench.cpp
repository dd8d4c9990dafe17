#include "editor/EmbeddedFiles.h"
#include "editor/LICE_CachedFont.h"
#include "editor/LICE_Draw.h"
#include "editor/LICE_Png.h"
#include "editor/thudforge/Layout.h"
#include "editor/thudforge/ThudForgeEditor.h"
#include "plugin/ThudForge.h"
#include "tests/editor/HeadlessGraphics.h"

#include <benchmark/benchmark.h>

#include <vector>

// The editor without a window: what it costs to bring one tick's changes into the back buffer, and the
// drawing operations that this is made of.

namespace {

using namespace Grimworks;

/// The whole editor on a screen in memory, with every picture decoded.
struct WholeEditor {
    WholeEditor() {
        plug.AttachGraphics(&graphics);
        plug.RedrawParamControls();
        for (int page = 0; page < ThudForgeEditor::kPages; ++page)
            Show(page);
        Show(0);
    }
    ~WholeEditor() { plug.AttachGraphics(nullptr); }
    WholeEditor(const WholeEditor&) = delete;
    WholeEditor& operator=(const WholeEditor&) = delete;

    void Show(int page) {
        plug.SelectPage(page);
        editor.ShowPage(page);
        constexpr int kEnough = 5;
        for (int i = 0; i < kEnough; ++i)
            graphics.RunTick();
        graphics.shown.clear();
    }

    void Tick() {
        graphics.RunTick();
        graphics.shown.clear();
    }

    ThudForge plug{nullptr};
    HeadlessGraphics graphics{plug, kEditorWidth, kEditorHeight};
    ThudForgeEditor editor{plug, graphics};
};

void EditorIdleTick(benchmark::State& state) {
    WholeEditor whole;
    for (auto _ : state)
        whole.Tick();
}
BENCHMARK(EditorIdleTick);

/// Argument: how many knobs a host moves between two ticks, all over the window.
void EditorTickWithMovingKnobs(benchmark::State& state) {
    WholeEditor whole;
    std::vector<int> ids;
    for (int id = 0; id < kLiveParameters && static_cast<std::int64_t>(ids.size()) < state.range(0); id += 7)
        ids.push_back(id);
    double position = 0.0;
    for (auto _ : state) {
        state.PauseTiming();
        position = position < 0.9 ? position + 0.01 : 0.0;
        for (const int id : ids)
            whole.plug.SetParameterFromHost(id, position);
        state.ResumeTiming();
        whole.Tick();
    }
}
BENCHMARK(EditorTickWithMovingKnobs)->Arg(1)->Arg(20);

/// The scope page while sound goes on: a block of 1764 frames, 40 ms, between two ticks.
void EditorScopeTick(benchmark::State& state) {
    WholeEditor whole;
    whole.Show(1);
    constexpr int kFrames = 1764;
    std::vector<double> left(kFrames);
    std::vector<double> right(kFrames);
    double* outputs[] = {left.data(), right.data()};
    AEffect* effect = whole.plug.Effect();
    effect->dispatcher(effect, PlugOp::SetBlockSize, 0, kFrames, nullptr, 0.0F);
    effect->dispatcher(effect, PlugOp::MainsChanged, 0, 1, nullptr, 0.0F);
    whole.plug.ProcessMidiMsg(MidiMessage{0, 0x90, 36, 100});
    for (auto _ : state) {
        state.PauseTiming();
        effect->processDoubleReplacing(effect, nullptr, outputs, kFrames);
        state.ResumeTiming();
        whole.Tick();
    }
}
BENCHMARK(EditorScopeTick);

void EditorWholeRedraw(benchmark::State& state) {
    WholeEditor whole;
    for (auto _ : state) {
        whole.graphics.Draw({0, 0, kEditorWidth, kEditorHeight});
        whole.graphics.shown.clear();
    }
}
BENCHMARK(EditorWholeRedraw);

/// Argument: side of a square with half-transparent pixels among opaque ones.
void EditorBlit(benchmark::State& state) {
    const auto side = static_cast<int>(state.range(0));
    LICE_MemBitmap target(side, side);
    LICE_MemBitmap source(side, side);
    for (int i = 0; i < side * side; ++i)
        source.getBits()[i] = LICE_RGBA(i, i / 3, i / 7, i % 4 == 0 ? 128 : 255);
    for (auto _ : state) {
        LICE_Blit(&target, &source, 0, 0, {0, 0, side, side});
        benchmark::ClobberMemory();
    }
    state.SetItemsProcessed(state.iterations() * side * side);
}
BENCHMARK(EditorBlit)->Arg(40)->Arg(1000);

void EditorTextLine(benchmark::State& state) {
    LICE_MemBitmap target(400, 20);
    const auto font = LICE_MakeFont(IText(12, IColor(255, 255, 255, 255), IText::AlignNear));
    IRECT rect(0, 0, 400, 20);
    for (auto _ : state) {
        font->DrawText(&target, "MAXIMUM AUDIO LEVEL: -12.34 dB", rect, LICE_TextLeft);
        benchmark::ClobberMemory();
    }
}
BENCHMARK(EditorTextLine);

/// The first time that a window opens, once a process: all bitmaps from PNG.
void EditorDecodeBitmaps(benchmark::State& state) {
    for (auto _ : state) {
        for (const BitmapInfo& info : BitmapTable()) {
            const auto file = EmbeddedBitmap(info.id);
            benchmark::DoNotOptimize(LoadPngFromMemory(file.data(), file.size()));
        }
    }
}
BENCHMARK(EditorDecodeBitmaps)->Unit(benchmark::kMillisecond);

} // namespace
