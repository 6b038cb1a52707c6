#include "pdf/annotations/ButtonAppearance.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <sstream>
#include <vector>

namespace tallyfold::pdf {

namespace {

struct Captioned {
    const char *caption;
    ButtonMark mark;
};

std::string markOf(const std::string &entries, const Rect &area = {0, 0, 20, 40})
{
    TextBox box;
    box.area = area;
    box.color = DeviceColor::rgb(1, 0, 0);
    std::string operators;
    ContentStream content(operators);
    appendButtonMark(content, QPDFObjectHandle::parse("<<" + entries + ">>"), box);
    return operators;
}

/// The points that the operators of a path lead to.
std::vector<Point> cornersOf(const std::string &content)
{
    std::vector<Point> corners;
    std::vector<double> numbers;
    std::istringstream words(content);
    for (std::string word; words >> word;) {
        if (word == "m" || word == "l" || word == "c") {
            corners.push_back({numbers.at(numbers.size() - 2), numbers.back()});
        }
        char *end = nullptr;
        const double number = std::strtod(word.c_str(), &end);
        if (*end == '\0') {
            numbers.push_back(number);
        }
    }
    return corners;
}

Rect boundsOf(const std::vector<Point> &points)
{
    Rect bounds{points.at(0).x, points.at(0).y, points.at(0).x, points.at(0).y};
    for (const Point point : points) {
        bounds = {std::min(bounds.minX, point.x), std::min(bounds.minY, point.y),
                  std::max(bounds.maxX, point.x), std::max(bounds.maxY, point.y)};
    }
    return bounds;
}

} // namespace

TEST(ButtonMarks, KindsAreToldByTheirFlags)
{
    EXPECT_FALSE(isPushButton(0));
    EXPECT_FALSE(isRadioButton(0));
    EXPECT_TRUE(isPushButton(1 << 16));
    EXPECT_FALSE(isRadioButton(1 << 16));
    EXPECT_TRUE(isRadioButton(1 << 15));
    EXPECT_FALSE(isRadioButton(1 << 14));
    EXPECT_FALSE(isRadioButton((1 << 15) | (1 << 16)));
}

TEST(ButtonMarks, TheCaptionChoosesTheMark)
{
    for (const auto &[caption, mark] :
         {Captioned{"4", ButtonMark::check}, Captioned{"l", ButtonMark::disc},
          Captioned{"8", ButtonMark::cross}, Captioned{"u", ButtonMark::diamond},
          Captioned{"n", ButtonMark::square}, Captioned{"H", ButtonMark::star},
          Captioned{"z", ButtonMark::check}}) {
        const std::string entries = "<</MK<</CA(" + std::string(caption) + ")>>>>";
        EXPECT_EQ(buttonMark(QPDFObjectHandle::parse(entries)), mark) << caption;
    }
    EXPECT_EQ(buttonMark(QPDFObjectHandle::parse("<<>>")), ButtonMark::check);
    EXPECT_EQ(buttonMark(QPDFObjectHandle::parse("<</Ff 32768>>")), ButtonMark::disc);
    EXPECT_EQ(buttonMark(QPDFObjectHandle::parse("<</Ff 32768/MK<</CA(8)>>>>")), ButtonMark::cross);
}

TEST(ButtonMarks, AButtonThatIsOffHasNoMark)
{
    EXPECT_EQ(markOf(""), "");
    EXPECT_EQ(markOf("/AS/Off"), "");
    EXPECT_EQ(markOf("/AS/Yes", {0, 0, 0, 9}), "");
    EXPECT_NE(markOf("/AS/Yes"), "");
}

TEST(ButtonMarks, MarksStandInTheMiddleOfTheBox)
{
    // Half of the shorter side, less what a mark leaves free: 7 to each side of 10, 20.
    EXPECT_EQ(markOf("/AS/Yes/MK<</CA(u)>>"), "q 1 0 0 rg 3 20 m 10 27 l 17 20 l 10 13 l h f Q\n");
    EXPECT_EQ(markOf("/AS/Yes/MK<</CA(n)>>"),
              "q 1 0 0 rg 5.1 15.1 m 5.1 24.9 l 14.9 24.9 l 14.9 15.1 l h f Q\n");
    EXPECT_EQ(
        markOf("/AS/Yes/MK<</CA(8)>>"),
        "q 1 0 0 rg 3 15.1 m 7.9 20 l 3 24.9 l 5.1 27 l 10 22.1 l 14.9 27 l 17 24.9 l 12.1 20 l 17 15.1 l "
        "14.9 13 l 10 17.9 l 5.1 13 l h f Q\n");
    EXPECT_EQ(boundsOf(cornersOf(markOf("/AS/Yes/MK<</CA(4)>>"))), (Rect{3, 13, 17, 27}));
    EXPECT_EQ(markOf("/AS/Yes/MK<</CA(4)>>"),
              "q 1 0 0 rg 3 19.65 m 5.1 21.75 l 7.9 17.55 l 15.25 27 l 17 25.95 l 8.25 13 l h f Q\n");
    EXPECT_EQ(boundsOf(cornersOf(markOf("/AS/Yes/MK<</CA(l)>>"))), (Rect{5.1, 15.1, 14.9, 24.9}));
    EXPECT_EQ(boundsOf(cornersOf(markOf("/AS/Yes/MK<</CA(u)>>", {100, 200, 140, 220}))),
              (Rect{113, 203, 127, 217}));
}

TEST(ButtonMarks, AStarHasFivePointsAndOneIsAtTheTop)
{
    const std::vector<Point> corners = cornersOf(markOf("/AS/Yes/MK<</CA(H)>>"));
    ASSERT_EQ(corners.size(), 10U);
    EXPECT_EQ(corners[0], (Point{10, 27}));
    for (std::size_t index = 0; index < corners.size(); ++index) {
        const double distance = std::hypot(corners[index].x - 10, corners[index].y - 20);
        EXPECT_NEAR(distance, index % 2 == 0 ? 7 : 7 * 0.382, 0.001) << index;
        EXPECT_NE(corners[index], corners[(index + 1) % corners.size()]);
    }
    // A line from one point to the next but one passes through the two inner corners between them.
    EXPECT_NEAR(corners[1].y, corners[2].y, 0.01);
    EXPECT_NEAR(corners[9].y, corners[8].y, 0.01);
    EXPECT_NEAR(corners[1].y, corners[9].y, 0.001);
}

} // namespace tallyfold::pdf
