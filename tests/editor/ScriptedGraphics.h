#pragma once

#include "tests/editor/HeadlessGraphics.h"

#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace Grimworks {

/// Headless graphics that also keep every text, question and address, and answer file dialogs as set up.
class ScriptedGraphics final : public HeadlessGraphics {
public:
    struct FileQuestion {
        std::string file;
        std::string dir;
        int action;
        std::string extensions;
    };
    struct DrawnText {
        std::string string;
        IRECT rect;
        IText text;
    };

    using HeadlessGraphics::HeadlessGraphics;

    bool DrawIText(const IText& text, std::string_view string, const IRECT& rect) override {
        texts.push_back({std::string(string), rect, text});
        return HeadlessGraphics::DrawIText(text, string, rect);
    }

    IPopupMenu* CreateIPopupMenu(IPopupMenu& menu, const IRECT& rect) override {
        menuRects.push_back(rect);
        return HeadlessGraphics::CreateIPopupMenu(menu, rect);
    }

    void PromptForFile(std::string& file, std::string& dir, int action,
                       const std::string& extensions) override {
        questions.push_back({file, dir, action, extensions});
        if (whileAsking) whileAsking();
        file = chosenFile;
        if (!chosenFile.empty()) dir = chosenDir;
    }

    bool OpenURL(const std::string& url) override {
        return HeadlessGraphics::OpenURL(url) && url != failingUrl;
    }

    std::function<void()> whileAsking;
    std::string chosenFile; ///< empty for a user who cancels
    std::string chosenDir;
    std::string failingUrl;

    std::vector<IRECT> menuRects;
    std::vector<FileQuestion> questions;
    std::vector<DrawnText> texts;
};

} // namespace Grimworks
