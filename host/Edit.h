#pragma once

#include "host/LiveAudio.h"
#include "host/PluginHost.h"

#include <filesystem>
#include <functional>
#include <optional>

namespace Grimworks {

/// The pages of the editor, by the numbers that the instrument knows them by.
enum class EditPage { Synth = 0, Scope = 1, About = 2 };

/// How an editor is to be shown.
struct EditJob {
    std::optional<EditPage> page;     ///< none: the one that the instrument opens with
    bool audio = true;                ///< blocks are played while the window is open
    std::optional<RepeatedKey> key;   ///< heard by the instrument's displays only
    std::optional<double> seconds;    ///< until the window closes by itself
    std::filesystem::path screenshot; ///< a PNG file; empty for none
};

/// How it ended.
enum class EditEnd {
    Closed, ///< by the user, or when its time was over
    Photographed,
    Interrupted, ///< `goOn` said so
};

/// Shows a plug-in's editor in a window of its own until the user closes it, its time is over or the
/// screenshot stands, which is taken at the end of `seconds` or, without them, shortly after the editor has
/// drawn itself. Throws HostError when the plug-in has no editor, there is no display, or the picture cannot
/// be written.
[[nodiscard]] EditEnd ShowEditor(PluginHost& host, const EditJob& job, const std::function<bool()>& goOn);

/// Size of a plug-in's editor. Throws HostError when it has none, or one of a size that cannot be.
struct EditorSize {
    int width = 0;
    int height = 0;
};
[[nodiscard]] EditorSize SizeOfEditor(PluginHost& host);

} // namespace Grimworks
