#include "pdf/copy/ResourceUse.h"

#include <gtest/gtest.h>

namespace tallyfold::pdf {

TEST(ResourceUse, OperatorsThatTakeANameNameResources)
{
    for (const char *content :
         {"/X Do", "/F 12 Tf", "/G gs", "/S sh", "/P scn", "/P SCN", "1 0 0 /P scn", "/C cs", "/C CS",
          "/OC /L BDC", "/Mark /L DP", "q/X Do Q", "[]0 d/X\nDo", "BI /W 1/H 1/BPC 8/CS /Mine ID x EI"}) {
        EXPECT_TRUE(namesResources(content)) << content;
    }
}

TEST(ResourceUse, WhatIsBuiltInIsNoResource)
{
    for (const char *content : {"", "1 0 0 rg 0 0 9 9 re f", "/DeviceRGB cs 1 0 0 sc", "/Pattern CS",
                                "1 0 0 scn", "/Span <</ActualText (x)>> BDC EMC", "/Artifact BMC EMC",
                                "BI /W 1/H 1/BPC 8/CS /RGB/F /AHx ID 00> EI", "0 0 1 1 re W n"}) {
        EXPECT_FALSE(namesResources(content)) << content;
    }
}

} // namespace tallyfold::pdf
