#include "editor/thudforge/IGwTabButton.h"

#include "tests/editor/thudforge/InstrumentRig.h"

#include <gtest/gtest.h>

namespace Grimworks {
namespace {

struct Tabs {
    explicit Tabs(InstrumentRig& rig)
        : tabs{&rig.Attach<IGwTabButton>(0, 0, rig.strips.Make(85, 50, 2), 0),
               &rig.Attach<IGwTabButton>(90, 0, rig.strips.Make(85, 50, 2), 1),
               &rig.Attach<IGwTabButton>(180, 0, rig.strips.Make(85, 50, 2), 2)} {}

    void ExpectOnly(int page) const {
        for (const IGwTabButton* tab : tabs)
            EXPECT_EQ(tab->Value(), tab->Page() == page ? 1.0 : 0.0) << "tab " << tab->Page();
    }

    IGwTabButton* tabs[3];
};

TEST(IGwTabButton, SynthTabIsDownAtFirst) {
    InstrumentRig rig;
    const Tabs tabs(rig);
    tabs.ExpectOnly(0);
}

TEST(IGwTabButton, ClickSelectsThePageAndReleasesTheOtherTabs) {
    InstrumentRig rig;
    const Tabs tabs(rig);
    for (const int page : {1, 2, 0}) {
        rig.Click(*tabs.tabs[page]);
        rig.graphics.Tick();
        EXPECT_EQ(rig.plug.CurrentPage(), page);
        tabs.ExpectOnly(page);
    }
}

TEST(IGwTabButton, ClickOnThePageThatIsThereChangesNothing) {
    InstrumentRig rig;
    const Tabs tabs(rig);
    rig.Click(*tabs.tabs[1]);
    rig.Click(*tabs.tabs[1]);
    rig.graphics.OnMouseDblClick(100, 20, kLeft);
    rig.graphics.Tick();
    EXPECT_EQ(rig.plug.CurrentPage(), 1);
    tabs.ExpectOnly(1);
}

TEST(IGwTabButton, ClickIsDrawnAtTheNextTick) {
    InstrumentRig rig;
    const Tabs tabs(rig);
    rig.graphics.Settle();
    rig.Click(*tabs.tabs[2]);
    rig.graphics.RunTick();
    EXPECT_EQ((rig.graphics.ScreenPixel(200, 20) >> 16U) & 0xFFU, 2U); // its own frame for down
    EXPECT_EQ((rig.graphics.ScreenPixel(20, 20) >> 16U) & 0xFFU, 1U);
}

TEST(IGwTabButton, PageSelectedElsewhereIsSeenAtTheNextTick) {
    InstrumentRig rig;
    const Tabs tabs(rig);
    rig.graphics.Settle();
    rig.plug.SelectPage(2);
    EXPECT_FALSE(rig.graphics.Tick().Empty());
    tabs.ExpectOnly(2);
}

} // namespace
} // namespace Grimworks
