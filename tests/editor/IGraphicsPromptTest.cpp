#include "editor/IGraphics.h"
#include "editor/TextEntry.h"

#include "tests/editor/FakePlug.h"
#include "tests/editor/HeadlessGraphics.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>
#include <vector>

namespace Grimworks {
namespace {

/// Remembers what the user entered.
class Field final : public IControl {
public:
    using IControl::IControl;
    bool Draw(IGraphics&) override { return true; }
    void SetValueFromUserInput(double newValue) override { values.push_back(newValue); }
    void TextFromTextEntry(std::string_view entered) override { texts.emplace_back(entered); }

    std::vector<double> values;
    std::vector<std::string> texts;
};

IParam MakeParam(IParam::Type type, double min, double max, double step) {
    IParam param;
    param.SetType(type);
    param.InitDouble({.name = "Mode",
                      .defaultValue = min,
                      .min = min,
                      .max = max,
                      .step = step,
                      .label = {},
                      .group = {}});
    return param;
}

IParam MakeChoice(const std::vector<std::string>& names) {
    IParam param = MakeParam(IParam::Type::Enum, 0.0, static_cast<double>(names.size()) - 1.0, 1.0);
    for (std::size_t i = 0; i < names.size(); ++i)
        param.SetDisplayText(static_cast<int>(i), names[i]);
    return param;
}

class IGraphicsPrompt : public testing::Test {
protected:
    IGraphicsPrompt() : graphics(plug, 100, 100), field(&graphics.Attach<Field>(&plug, IRECT(0, 0, 9, 9))) {}

    FakePlug plug;
    HeadlessGraphics graphics;
    Field* field;
    const IRECT rect{10, 20, 50, 36};
};

TEST_F(IGraphicsPrompt, NamedChoicesOpenAMenuWithTheCurrentRowChecked) {
    IParam param = MakeChoice({"Sine", "Pulse", "Saw"});
    param.SetValue(1.0);
    std::vector<std::string> rows;
    std::vector<bool> checked;
    graphics.onMenu = [&](IPopupMenu& menu) -> IPopupMenu* {
        for (int i = 0; i < menu.ItemCount(); ++i) {
            rows.push_back(menu.ShownText(i));
            checked.push_back(menu.Item(i)->IsChecked());
        }
        menu.SetChosenItem(2);
        return &menu;
    };
    graphics.PromptUserInput(*field, param, rect);
    EXPECT_EQ(rows, (std::vector<std::string>{"Sine", "Pulse", "Saw"}));
    EXPECT_EQ(checked, (std::vector<bool>{false, true, false}));
    EXPECT_EQ(graphics.menuRect, rect);
    EXPECT_EQ(field->values, std::vector<double>{1.0}) << "the last of three rows is 1 on 0..1";
    EXPECT_TRUE(graphics.entries.empty());
}

TEST_F(IGraphicsPrompt, RowsAreEvenlySpread) {
    const IParam param = MakeChoice({"a", "b", "c", "d", "e"});
    for (int row = 0; row < 5; ++row) {
        graphics.onMenu = ChooseRow(row);
        graphics.PromptUserInput(*field, param, rect);
        EXPECT_DOUBLE_EQ(field->values.back(), row / 4.0);
    }
}

TEST_F(IGraphicsPrompt, MenuThatIsClosedWithoutAChoiceChangesNothing) {
    const IParam param = MakeChoice({"a", "b"});
    graphics.PromptUserInput(*field, param, rect);
    EXPECT_EQ(graphics.menusShown, 1);
    graphics.onMenu = [](IPopupMenu& menu) { return &menu; };
    graphics.PromptUserInput(*field, param, rect);
    EXPECT_EQ(graphics.menusShown, 2);
    EXPECT_TRUE(field->values.empty());
}

TEST_F(IGraphicsPrompt, FirstRowIsTheLowestValue) {
    IParam param = MakeParam(IParam::Type::Enum, 2.0, 4.0, 1.0);
    for (int value = 2; value <= 4; ++value)
        param.SetDisplayText(value, "octave " + std::to_string(value));
    param.SetValue(3.0);
    int checked = -1;
    graphics.onMenu = [&](IPopupMenu& menu) {
        for (int row = 0; row < menu.ItemCount(); ++row) {
            if (menu.Item(row)->IsChecked()) checked = row;
        }
        EXPECT_EQ(menu.ShownText(0), "octave 2");
        menu.SetChosenItem(2);
        return &menu;
    };
    graphics.PromptUserInput(*field, param, rect);
    EXPECT_EQ(checked, 1);
    EXPECT_EQ(field->values, std::vector<double>{1.0});
}

TEST_F(IGraphicsPrompt, SwitchWithTwoNamesOpensAMenu) {
    IParam param = MakeParam(IParam::Type::Bool, 0.0, 1.0, 1.0);
    param.SetDisplayText(0, "Off");
    param.SetDisplayText(1, "On");
    graphics.onMenu = ChooseRow(1);
    graphics.PromptUserInput(*field, param, rect);
    EXPECT_EQ(field->values, std::vector<double>{1.0});
}

TEST_F(IGraphicsPrompt, ChoiceWithAValueThatHasNoNameOpensTheTextEntry) {
    IParam param = MakeParam(IParam::Type::Enum, 0.0, 2.0, 1.0);
    param.SetDisplayText(0, "Off");
    param.SetDisplayText(2, "On");
    param.SetValue(2.0);
    graphics.PromptUserInput(*field, param, rect);
    EXPECT_EQ(graphics.menusShown, 0);
    ASSERT_EQ(graphics.entries.size(), 1U);
    EXPECT_EQ(graphics.entries[0].string, "2");
}

TEST_F(IGraphicsPrompt, NumberOpensTheTextEntryWithItsDecimals) {
    IParam param = MakeParam(IParam::Type::Double, 0.0, 10.0, 0.001);
    param.SetDisplayText(3, "three");
    param.SetValue(3.0);
    graphics.PromptUserInput(*field, param, rect);
    ASSERT_EQ(graphics.entries.size(), 1U);
    EXPECT_EQ(graphics.entries[0].control, field);
    EXPECT_EQ(graphics.entries[0].rect, rect);
    EXPECT_EQ(graphics.entries[0].param, &param);
    EXPECT_EQ(graphics.entries[0].string, "3.000") << "the number, not its name";
}

TEST_F(IGraphicsPrompt, WholeNumberOpensTheTextEntryWithoutDecimals) {
    IParam param = MakeParam(IParam::Type::Int, -5.0, 5.0, 1.0);
    param.SetValue(-3.0);
    graphics.PromptUserInput(*field, param, rect);
    ASSERT_EQ(graphics.entries.size(), 1U);
    EXPECT_EQ(graphics.entries[0].string, "-3");
}

TEST_F(IGraphicsPrompt, TextWithoutAParameterGoesToTheControl) {
    IGraphics::CommitTextEntry(*field, nullptr, "C2 Kick");
    EXPECT_EQ(field->texts, std::vector<std::string>{"C2 Kick"});
    EXPECT_TRUE(field->values.empty());
}

TEST_F(IGraphicsPrompt, AtMostThirtyTwoCharactersAreRead) {
    IGraphics::CommitTextEntry(*field, nullptr, std::string(100, 'x'));
    EXPECT_EQ(field->texts, std::vector<std::string>{std::string(32, 'x')});
}

TEST_F(IGraphicsPrompt, CharactersOfSeveralBytesCountAsOneEach) {
    std::string accents;
    for (int i = 0; i < 33; ++i)
        accents += "\xC3\xA9";
    IGraphics::CommitTextEntry(*field, nullptr, accents);
    EXPECT_EQ(field->texts, std::vector<std::string>{accents.substr(0, 64)});
}

TEST_F(IGraphicsPrompt, NumberIsLimitedAndTurnedIntoZeroToOne) {
    const IParam param = MakeParam(IParam::Type::Double, -10.0, 30.0, 0.01);
    for (const auto& [text, normalized] : {std::pair<const char*, double>{"0", 0.25},
                                           {"10.0", 0.5},
                                           {"-4 dB", 0.15},
                                           {"500", 1.0},
                                           {"-500", 0.0},
                                           {"1e9", 1.0},
                                           {"", 0.25},
                                           {"what", 0.25}}) {
        IGraphics::CommitTextEntry(*field, &param, text);
        EXPECT_DOUBLE_EQ(field->values.back(), normalized) << text;
    }
    const std::size_t before = field->values.size();
    IGraphics::CommitTextEntry(*field, &param, "nan");
    EXPECT_EQ(field->values.size(), before);
}

TEST_F(IGraphicsPrompt, InvertedDisplayTurnsTheSign) {
    IParam param = MakeParam(IParam::Type::Double, -10.0, 10.0, 0.1);
    param.SetNegateDisplay(true);
    IGraphics::CommitTextEntry(*field, &param, "5");
    EXPECT_DOUBLE_EQ(field->values.back(), 0.25);
}

TEST_F(IGraphicsPrompt, NameOfAChoiceGivesItsValue) {
    const IParam param = MakeChoice({"Sine", "Pulse", "Saw"});
    IGraphics::CommitTextEntry(*field, &param, "Pulse");
    EXPECT_DOUBLE_EQ(field->values.back(), 0.5);
    IGraphics::CommitTextEntry(*field, &param, "2");
    EXPECT_DOUBLE_EQ(field->values.back(), 1.0);
}

TEST_F(IGraphicsPrompt, NumberIsNotLookedUpAmongTheNames) {
    IParam param = MakeParam(IParam::Type::Double, 0.0, 10.0, 0.1);
    param.SetDisplayText(8, "2");
    IGraphics::CommitTextEntry(*field, &param, "2");
    EXPECT_DOUBLE_EQ(field->values.back(), 0.2);
}

TEST(TextEntryTakes, EverythingWithoutAParameter) {
    for (int c = 1; c < 256; ++c)
        EXPECT_TRUE(TextEntryTakes(nullptr, static_cast<char>(c)));
}

TEST(TextEntryTakes, DigitsAndSignsForWholeNumbersThePointTooForOthers) {
    for (const IParam::Type type :
         {IParam::Type::Bool, IParam::Type::Int, IParam::Type::Enum, IParam::Type::Double}) {
        const IParam param = MakeParam(type, 0.0, 10.0, 1.0);
        for (int c = 1; c < 256; ++c) {
            const auto character = static_cast<char>(c);
            const std::string taken = type == IParam::Type::Double ? "0123456789+-.\b" : "0123456789+-\b";
            EXPECT_EQ(TextEntryTakes(&param, character), taken.find(character) != std::string::npos)
                << c << " of type " << static_cast<int>(type);
        }
    }
}

} // namespace
} // namespace Grimworks
