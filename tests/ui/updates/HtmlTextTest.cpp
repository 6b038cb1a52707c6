#include "ui/updates/HtmlText.h"

#include <gtest/gtest.h>

namespace tallyfold {

TEST(HtmlText, ParagraphsLinesAndEntriesStayApart)
{
    EXPECT_EQ(
        plainTextOfHtml(u"<h2>New</h2>\n<p>One\n two</p><ul>\n <li>first</li><li><p>second</p></li></ul>"
                        u"End<br>of <b>it</b><br/><br/>all"),
        QStringLiteral("New\n\nOne two\n\n• first\n• second\n\nEnd\nof it\n\nall"));
    EXPECT_EQ(plainTextOfHtml(u"<table><tr><td>a</td><td>b</td></tr><tr><td>c</td></tr></table>"),
              QStringLiteral("a b\nc"));
}

TEST(HtmlText, TextWithoutTagsKeepsItsLines)
{
    EXPECT_EQ(plainTextOfHtml(u"  One\n  two\n\n\n\nthree < four & five \n"),
              QStringLiteral("One\ntwo\n\nthree < four & five"));
}

TEST(HtmlText, ScriptsStylesCommentsAndHeadsAreLeftOut)
{
    EXPECT_EQ(
        plainTextOfHtml(u"<!DOCTYPE html><head><title>no</title></head>a<script>if (1 < 2) '</p>'</script >b"
                        u"<STYLE>p { }</style>c<!-- > <p> -->d<?php ?>e"),
        QStringLiteral("abcde"));
    EXPECT_EQ(plainTextOfHtml(u"a<img src='https://example.org/a.png' alt='b > c'>d"), QStringLiteral("ad"));
}

TEST(HtmlText, ReferencesBecomeCharacters)
{
    EXPECT_EQ(plainTextOfHtml(u"&lt;b&gt; &amp;amp; &quot;&apos; &#8217;&#x2019;&#X1F600; &hellip;"),
              QStringLiteral("<b> &amp; \"' ’’😀 …"));
    EXPECT_EQ(plainTextOfHtml(u"a&nbsp;b"), QStringLiteral("a\u00A0b"));
    EXPECT_EQ(plainTextOfHtml(u"&nothing; &; &#; &#x; &#xZZ; & &amp"),
              QStringLiteral("&nothing; &; &#; &#x; &#xZZ; & &amp"));
    EXPECT_EQ(plainTextOfHtml(u"&#0;&#xD800;&#x110000;"), QStringLiteral("\uFFFD\uFFFD\uFFFD"));
}

TEST(HtmlText, WhatSteersTheDisplayIsLeftOut)
{
    EXPECT_EQ(plainTextOfHtml(u"a\u202Eb&#x2066;c\u0007d&#27;e"), QStringLiteral("abcde"));
}

TEST(HtmlText, TornTextIsReadAsFarAsItGoes)
{
    EXPECT_EQ(plainTextOfHtml(u"a<b"), QStringLiteral("a"));
    EXPECT_EQ(plainTextOfHtml(u"a<b title='c>d"), QStringLiteral("a"));
    EXPECT_EQ(plainTextOfHtml(u"a<!-- b"), QStringLiteral("a"));
    EXPECT_EQ(plainTextOfHtml(u"a<script>b"), QStringLiteral("a"));
    EXPECT_EQ(plainTextOfHtml(u"a<"), QStringLiteral("a<"));
    EXPECT_EQ(plainTextOfHtml(u"a</"), QStringLiteral("a"));
    EXPECT_EQ(plainTextOfHtml(u""), QString());
    const char16_t torn[] = {u'a', 0xD83D, 0};
    EXPECT_EQ(plainTextOfHtml(torn), QStringLiteral("a\uFFFD"));
}

} // namespace tallyfold
