#include "pdf/annotations/AnnotationAppearance.h"
#include "pdf/annotations/AppearanceForm.h"

#include <gtest/gtest.h>

#include <qpdf/QPDF.hh>

namespace tallyfold::pdf {

namespace {

QPDFObjectHandle parsed(const std::string &entries)
{
    return QPDFObjectHandle::parse("<<" + entries + ">>");
}

const Rect formBox{0, 0, 10, 20};

} // namespace

TEST(AppearancePlacement, WhatAScreenDoesNotShowIsNotShown)
{
    EXPECT_TRUE(isShown(parsed("/Subtype/Square")));
    EXPECT_FALSE(isShown(parsed("/Subtype/Popup")));
    EXPECT_TRUE(isShown(parsed("/Subtype/Link")));
    EXPECT_TRUE(isShown(parsed("")));
    EXPECT_FALSE(isShown(QPDFObjectHandle::newNull()));
}

TEST(AppearancePlacement, OnlyHiddenAndNoViewHide)
{
    for (int bit = 0; bit < 10; ++bit) {
        const bool hides = bit == 1 || bit == 5;
        EXPECT_EQ(isShown(parsed("/Subtype/Square/F " + std::to_string(1 << bit))), !hides) << bit;
    }
    EXPECT_FALSE(isShown(parsed("/Subtype/Square/F 34")));
    // Some writers know one kind of number only.
    EXPECT_FALSE(isShown(parsed("/Subtype/Square/F 2.0")));
    EXPECT_FALSE(isShown(parsed("/Subtype/Square/F 2147483647.0")));
    for (const char *flags : {"4.0", "0.0", "-2.0", "2147483648.0", "4294967298.0", "(2)"}) {
        EXPECT_TRUE(isShown(parsed(std::string("/Subtype/Square/F ") + flags))) << flags;
    }
}

TEST(AppearancePlacement, AnAnnotationSaysItsStateOrItsFieldDoes)
{
    const std::string states = "/AP<</N<</Yes 1/No 2>>>>";
    EXPECT_EQ(appearanceState(parsed("/AS/Yes/V/No" + states)), "/Yes");
    EXPECT_EQ(appearanceState(parsed("/V/No" + states)), "/No");
    EXPECT_EQ(appearanceState(parsed("/Parent<</V/No>>" + states)), "/No");
    EXPECT_EQ(appearanceState(parsed("/AS(Yes)/V/No" + states)), "/No");
    EXPECT_EQ(appearanceState(parsed("/V/Maybe" + states)), "/Off");
    EXPECT_EQ(appearanceState(parsed("/V/No")), "/Off");
    EXPECT_EQ(appearanceState(parsed("/V(No)" + states)), "/Off");
    EXPECT_EQ(appearanceState(parsed(states)), "/Off");
}

TEST(AppearancePlacement, OnlyAButtonIsOffInAStateItHasNoAppearanceFor)
{
    const std::string states = "/AP<</N<</Yes 1/No 2>>>>";
    EXPECT_EQ(appearanceState(parsed("/FT/Btn/AS/Maybe" + states)), "/Off");
    EXPECT_EQ(appearanceState(parsed("/FT/Btn/AS/Yes" + states)), "/Yes");
    EXPECT_EQ(appearanceState(parsed("/FT/Tx/AS/Maybe" + states)), "/Maybe");
    EXPECT_EQ(appearanceState(parsed("/FT/Btn/AS/Maybe")), "/Maybe");
    EXPECT_EQ(appearanceState(parsed("/FT/Btn/AS/Maybe/AP<</N<<>>>>")), "/Maybe");
}

TEST(AppearancePlacement, AMatrixIsSixFiniteNumbers)
{
    const auto matrix = [](const std::string &text) { return matrixFrom(QPDFObjectHandle::parse(text)); };
    EXPECT_EQ(matrix("[1 2 3 4 5 6]"), (Matrix{1, 2, 3, 4, 5, 6}));
    EXPECT_EQ(matrix("[1 2 3 4 5 6 7]"), (Matrix{1, 2, 3, 4, 5, 6}));
    EXPECT_EQ(matrix("[1 2 3 4 5]"), std::nullopt);
    EXPECT_EQ(matrix("[1 2 3 4 5 /X]"), std::nullopt);
    EXPECT_EQ(matrix("[1" + std::string(400, '0') + ".0 2 3 4 5 6]"), std::nullopt);
    EXPECT_EQ(matrix("null"), std::nullopt);
}

TEST(AppearancePlacement, AFormIsMovedAndScaledIntoItsRectangle)
{
    const QPDFObjectHandle annotation = parsed("/Rect[100 200 150 240]");
    EXPECT_EQ(placementOf(annotation, formBox, {}, 0), (Matrix{5, 0, 0, 2, 100, 200}));
    EXPECT_EQ(placementOf(annotation, Rect{2, 4, 12, 24}, {}, 0), (Matrix{5, 0, 0, 2, 90, 192}));
    EXPECT_EQ(placementOf(annotation, formBox, {0, 1, -1, 0, 0, 0}, 90), (Matrix{2.5, 0, 0, 4, 150, 200}));
}

TEST(AppearancePlacement, WithoutARectangleOrAnAreaThereIsNoPlace)
{
    EXPECT_FALSE(placementOf(parsed(""), formBox, {}, 0));
    EXPECT_FALSE(placementOf(parsed("/Rect[0 0 0 9]"), formBox, {}, 0));
    EXPECT_FALSE(placementOf(parsed("/Rect[0 0 9 0]"), formBox, {}, 0));
    const QPDFObjectHandle annotation = parsed("/Rect[0 0 9 9]");
    EXPECT_TRUE(placementOf(annotation, formBox, {}, 0));
    EXPECT_FALSE(placementOf(annotation, Rect{0, 0, 0, 9}, {}, 0));
    EXPECT_FALSE(placementOf(annotation, Rect{0, 0, 9, 0}, {}, 0));
    EXPECT_FALSE(placementOf(annotation, Rect{0, 0, 1e-320, 9}, {}, 0));
    EXPECT_FALSE(placementOf(annotation, Rect{0, 0, 9, 1e-320}, {}, 0));
    EXPECT_TRUE(placementOf(parsed("/Rect[0 0 0.5 0.5]"), Rect{0, 0, 0.5, 0.5}, {}, 0));
}

TEST(AppearancePlacement, AFormWithoutABoxKeepsItsSizeInTheLowerLeftCorner)
{
    EXPECT_EQ(placementOf(parsed("/Rect[100 200 150 240]"), std::nullopt, {}, 0),
              (Matrix{1, 0, 0, 1, 100, 200}));
    EXPECT_EQ(placementOf(parsed("/Rect[100 200 150 240]"), std::nullopt, {2, 0, 0, 2, 7, 9}, 0),
              (Matrix{1, 0, 0, 1, 93, 191}));
}

TEST(AppearancePlacement, AMatrixThatFlattensShowsNothing)
{
    const QPDFObjectHandle annotation = parsed("/Rect[100 200 150 240]");
    EXPECT_FALSE(placementOf(annotation, std::nullopt, {0, 0, 0, 0, 0, 0}, 0));
    EXPECT_FALSE(placementOf(annotation, formBox, {2, 3, 4, 6, 0, 0}, 0));
    EXPECT_TRUE(placementOf(annotation, formBox, {2, 3, 4, 5, 0, 0}, 0));
}

TEST(AppearancePlacement, WhatDoesNotTurnWithThePageHangsFromItsUpperLeftCorner)
{
    const Rect box{0, 0, 10, 20};
    const QPDFObjectHandle annotation = parsed("/Rect[100 200 110 220]/F 16");
    EXPECT_EQ(placementOf(annotation, box, {}, 0), (Matrix{1, 0, 0, 1, 100, 200}));
    EXPECT_EQ(boundsOfTransformed(*placementOf(annotation, box, {}, 90), box), (Rect{100, 220, 120, 230}));
    EXPECT_EQ(boundsOfTransformed(*placementOf(annotation, box, {}, 180), box), (Rect{90, 220, 100, 240}));
    EXPECT_EQ(boundsOfTransformed(*placementOf(annotation, box, {}, 270), box), (Rect{80, 210, 100, 220}));
    for (const int rotation : {90, 180, 270}) {
        EXPECT_EQ(transform(*placementOf(annotation, box, {}, rotation), {0, 20}), (Point{100, 220}))
            << rotation;
        EXPECT_EQ(placementOf(parsed("/Rect[100 200 110 220]"), box, {}, rotation),
                  (Matrix{1, 0, 0, 1, 100, 200}));
    }
}

TEST(AppearancePlacement, ValuesAreInheritedFromTheNearestFieldThatHasOne)
{
    QPDFObjectHandle field = parsed("/V(own)/Parent<</V(above)>>");
    EXPECT_EQ(inheritedFieldValue(field, "/V").getStringValue(), "own");
    field.removeKey("/V");
    EXPECT_EQ(inheritedFieldValue(field, "/V").getStringValue(), "above");
    EXPECT_TRUE(inheritedFieldValue(field, "/DA").isNull());
    EXPECT_TRUE(inheritedFieldValue(QPDFObjectHandle::newNull(), "/V").isNull());
}

TEST(AppearancePlacement, ValuesAreInheritedThroughAsManyFieldsAsOccur)
{
    const auto valueThrough = [](int fields) {
        std::string field = "<</V 7>>";
        for (int above = 1; above < fields; ++above) {
            field = "<</Parent" + field + ">>";
        }
        return inheritedFieldValue(QPDFObjectHandle::parse(field), "/V");
    };
    EXPECT_TRUE(valueThrough(64).isInteger());
    EXPECT_TRUE(valueThrough(65).isNull());
}

TEST(AppearancePlacement, FieldsThatAreTheirOwnParentsEnd)
{
    QPDF file;
    file.emptyPDF();
    QPDFObjectHandle field = file.makeIndirectObject(parsed(""));
    field.replaceKey("/Parent", field);
    EXPECT_TRUE(inheritedFieldValue(field, "/V").isNull());
}

} // namespace tallyfold::pdf
