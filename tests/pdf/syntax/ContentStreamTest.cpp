#include "pdf/syntax/ContentStream.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <string>

namespace tallyfold::pdf {

namespace {

/// What `write` appends to an empty content stream.
template <typename Write> std::string written(const Write &write)
{
    std::string out;
    ContentStream content(out);
    write(content);
    return out;
}

} // namespace

TEST(ContentStream, WritesOperandsBeforeTheirOperator)
{
    EXPECT_EQ(written([](ContentStream &content) {
                  constexpr std::array dashes{3.0, 1.5};
                  content.concatenateMatrix({1, 0, 0, -1, 0.5, 7}).setLineWidth(0.75).setLineDash(dashes);
                  content.setLineCap(LineCap::round).setLineJoin(LineJoin::bevel).setGraphicsState("/G");
              }),
              "1 0 0 -1 0.5 7 cm 0.75 w [3 1.5 ] 0 d 1 J 2 j /G gs ");
    EXPECT_EQ(written([](ContentStream &content) {
                  content.beginSubpath({1, 2}).appendLine({3, 4}).appendCurve({5, 6}, {7, 8}, {9, 10});
                  content.closeSubpath().appendRectangle({10, 20, 40, 60});
              }),
              "1 2 m 3 4 l 5 6 7 8 9 10 c h 10 20 30 40 re ");
    EXPECT_EQ(written([](ContentStream &content) {
                  content.setFont("/T0", 10.5).setTextRise(-2).moveTextPosition({72, 700});
                  content.invokeXObject("/P");
              }),
              "/T0 10.5 Tf -2 Ts 72 700 Td /P Do ");
}

TEST(ContentStream, PaintsAPathInEachWay)
{
    EXPECT_EQ(written([](ContentStream &content) {
                  content.stroke().closeAndStroke().fill().fillAndStroke().closeFillAndStroke();
                  content.setClippingPath().endPath();
              }),
              "S s f B b W n ");
}

TEST(ContentStream, ChoosesTheOperatorOfAColourByItsComponents)
{
    constexpr DeviceColor cmyk{{0.1, 0.2, 0.3, 0.4}, 4};
    EXPECT_EQ(written([&](ContentStream &content) {
                  for (const Paint paint : {Paint::stroke, Paint::fill}) {
                      content.setColor(paint, {}).setColor(paint, DeviceColor::gray(0.5));
                      content.setColor(paint, DeviceColor::rgb(1, 0, 0.25)).setColor(paint, cmyk);
                  }
              }),
              "0 G 0.5 G 1 0 0.25 RG 0.1 0.2 0.3 0.4 K 0 g 0.5 g 1 0 0.25 rg 0.1 0.2 0.3 0.4 k ");
}

TEST(ContentStream, RoundsNumbersToTheirDecimals)
{
    EXPECT_EQ(written([](ContentStream &content) {
                  content.setLineWidth(1.23456).setColor(Paint::fill, DeviceColor::gray(0.75686));
                  content.setColor(Paint::fill, DeviceColor::gray(0.75686), 5);
                  content.concatenateMatrix({1.2345678, 0, 0, 1, 0, 0}).beginSubpath({NAN, -0.00001});
              }),
              "1.2346 w 0.7569 g 0.75686 g 1.234568 0 0 1 0 0 cm 0 0 m ");
}

TEST(ContentStream, ClosesWhatItOpensInTheOrderOfNesting)
{
    EXPECT_EQ(written([](ContentStream &content) {
                  const auto state = content.saveGraphicsState();
                  content.stroke();
                  {
                      const auto sequence = content.beginMarkedContent("/OC", "/O1");
                      const auto inner = content.saveGraphicsState(Separator::space);
                      content.fill();
                  }
                  const auto text = content.beginText();
                  content.moveTextPosition({1, 2}).endLine();
              }),
              "q S /OC /O1 BDC q f Q EMC\nBT 1 2 Td\nET\nQ\n");
}

TEST(ContentStream, EndsALineInThePlaceOfTheSpace)
{
    EXPECT_EQ(written([](ContentStream &content) {
                  content.fill().endLine().append("0 g\n").append("").stroke().endLine();
              }),
              "f\n0 g\nS\n");
}

TEST(ContentStream, WritesActualTextInUtf16)
{
    EXPECT_EQ(written([](ContentStream &content) {
                  {
                      const auto span = content.beginActualText(u"A\U0001f512");
                      content.fill().endLine();
                  }
                  const auto nothing = content.beginActualText({});
              }),
              "/Span<</ActualText<FEFF0041D83DDD12>>>BDC\nf\nEMC\n/Span<</ActualText()>>BDC\nEMC\n");
}

TEST(ContentStream, ShowsCodesWithAdjustmentsBetweenThem)
{
    EXPECT_EQ(written([](ContentStream &content) {
                  PositionedText text(content);
                  text.show(1);
                  text.show(0xab0f);
                  text.adjust(-120.456);
                  text.show(2);
              }),
              "[<0001AB0F>-120.46<0002>]TJ\n");
}

} // namespace tallyfold::pdf
