#include "effects/FilterNames.h"

#include <gtest/gtest.h>

#include <string>

using namespace Grimworks;

TEST(FilterNames, LongAndShortNamesByNumber) {
    EXPECT_EQ(Filter1Name(0), "RBJ LowPass");
    EXPECT_EQ(Filter1Name(3), "RBJ BandStop");
    EXPECT_EQ(Filter1ShortName(2), "RBJ-BP1");
    EXPECT_EQ(Filter2Name(0), "Chebyshev HighPass 12dB");
    EXPECT_EQ(Filter2Name(3), "Chebyshev LowPass 24dB");
    EXPECT_EQ(Filter2ShortName(5), "BW-BS12");
    EXPECT_EQ(FilterTransitionName(0), "Slow");
    EXPECT_EQ(FilterTransitionName(1), "Medium");
    EXPECT_EQ(FilterTransitionName(2), "Fast");
}

TEST(FilterNames, NumbersOutsideHaveNoName) {
    for (const int number : {-1, 6, 1000}) {
        EXPECT_EQ(Filter1Name(number), "");
        EXPECT_EQ(Filter2Name(number), "");
        EXPECT_EQ(Filter2ShortName(number), "");
        EXPECT_EQ(FilterTransitionName(number), "");
    }
}

TEST(FilterNames, TextProgramsKnowLongAndOldNames) {
    for (int i = 0; i < 4; ++i) {
        EXPECT_EQ(Filter1Number(Filter1Name(i)), i);
        EXPECT_EQ(Filter1Number(Filter1ShortName(i)), i);
    }
    EXPECT_EQ(Filter1Number("RBJ-BP"), 2);
    for (int i = 0; i < 6; ++i)
        EXPECT_EQ(Filter2Number(Filter2Name(i)), i);
    EXPECT_EQ(Filter2Number("HP 24dB"), 1);
    EXPECT_EQ(Filter2Number("LP 12dB"), 2);
    EXPECT_EQ(Filter2Number("LP 24dB"), 3);
    EXPECT_EQ(Filter2Number("BP 12dB"), 4);
    EXPECT_EQ(Filter2Number("BS 12dB"), 5);
    EXPECT_EQ(Filter1Number("rbj-bs"), 0);
    EXPECT_EQ(Filter2Number("CH-LP24"), 0);
    EXPECT_EQ(Filter2Number(""), 0);
}

TEST(FilterNames, CaptionsAreFormatted) {
    EXPECT_EQ(FilterBalanceText(0.7), "30.0% / 70.0%");
    EXPECT_EQ(FilterCutoffText(22040.0), "22040.0Hz");
    EXPECT_EQ(DumpExpandText(0.0), "100.0% LP");
    EXPECT_EQ(DumpExpandText(0.5), "0.0% HP");
    EXPECT_EQ(DumpExpandText(0.75), "50.0% HP");
}

TEST(FilterNames, CaptionsOfAnySizeStayWhole) {
    // 71 digits, the point, a decimal and the unit.
    const std::string text = FilterCutoffText(1e70);
    EXPECT_EQ(text.size(), 75U);
    EXPECT_EQ(text.substr(71), ".0Hz");
}
