#include "ui/updates/ReleaseNotes.h"

#include "ui/updates/Appcast.h"

#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <chrono>

namespace tallyfold {

namespace {

QString plain(const char16_t *html)
{
    return plainTextOfHtml(QString::fromUtf16(html));
}

/// The longest notes that are made of `part` after `start`.
QString filledWith(const char *part, const char *start = "")
{
    const QString repeated = QString::fromUtf8(part);
    return (QString::fromUtf8(start) + repeated.repeated(maxAppcastNotes / repeated.size()))
        .left(maxAppcastNotes);
}

} // namespace

TEST(ReleaseNotes, ParagraphsLinesAndEntriesStayApart)
{
    EXPECT_EQ(plain(u"<h2>New</h2>\n<p>One\n two</p><ul>\n <li>first</li><li><p>second</p></li></ul>"
                    u"End<br>of <b>it</b><br/><br/>all"),
              QStringLiteral("New\nOne two\n• first\n• second\nEnd\nof it\n\nall"));
    EXPECT_EQ(plain(u"<table><tr><td>a</td><td>b</td></tr><tr><td>c</td></tr></table>"),
              QStringLiteral("a\nb\nc"));
}

TEST(ReleaseNotes, TextWithoutTagsKeepsItsLines)
{
    EXPECT_EQ(plain(u"  One\n  two\n\nthree < four & five \n"),
              QStringLiteral("One\ntwo\n\nthree < four & five"));
}

TEST(ReleaseNotes, ScriptsStylesCommentsAndHeadsAreLeftOut)
{
    EXPECT_EQ(plain(u"<!DOCTYPE html><head><title>no</title></head>a<script>if (1 < 2) '</p>'</script >b"
                    u"<STYLE>p { }</style>c<!-- > <p> -->d<?php ?>e"),
              QStringLiteral("ab c d e"));
    EXPECT_EQ(plain(u"a<img src='https://example.org/a.png' alt='b'>c"), QStringLiteral("ac"));
}

TEST(ReleaseNotes, ReferencesBecomeCharacters)
{
    EXPECT_EQ(plain(u"&lt;b&gt; &amp;amp; &quot;&apos; &#8217;&#x2019;&#x1F600; &hellip;"),
              QStringLiteral("<b> &amp; \"' ’’😀 …"));
    EXPECT_EQ(plain(u"a&nbsp;b"), QStringLiteral("a b"));
    EXPECT_EQ(plain(u"&nothing; &; & &amp"), QStringLiteral("&nothing; &; & &"));
}

TEST(ReleaseNotes, WhatSteersTheDisplayIsLeftOut)
{
    EXPECT_EQ(plain(u"a\u202Eb&#x2066;c\u0007d&#27;e"), QStringLiteral("abcde"));
}

TEST(ReleaseNotes, TornTextIsReadAsFarAsItGoes)
{
    EXPECT_EQ(plain(u"a<b"), QStringLiteral("a"));
    EXPECT_EQ(plain(u"a<b title='c"), QStringLiteral("a"));
    EXPECT_EQ(plain(u"a<!-- b"), QStringLiteral("a"));
    EXPECT_EQ(plain(u"a<style>b"), QStringLiteral("a"));
    EXPECT_EQ(plain(u"a<script>b"), QStringLiteral("a"));
    EXPECT_EQ(plain(u"a<"), QStringLiteral("a<"));
    EXPECT_EQ(plain(u""), QString());
    const char16_t torn[] = {u'a', 0xD83D, u'<', u'b', u'>', 0};
    EXPECT_EQ(plain(torn), QStringLiteral("a?"));
}

TEST(ReleaseNotes, NothingIsLoaded)
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("hidden.css"));
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("p { display: none }");
    file.close();
    const char *const ways[] = {"<link rel='stylesheet' type='text/css' href='file://%1'><p>shown</p>",
                                "<style>@import 'file://%1';</style><p>shown</p>",
                                "< style>@import 'file://%1';</style><p>shown</p>",
                                "<sty<style></style>le>@import 'file://%1';</style><p>shown</p>",
                                "<style_>@import 'file://%1';</style><p>shown</p>"};
    for (const char *way : ways) {
        EXPECT_TRUE(plainTextOfHtml(QString::fromUtf8(way).arg(path)).endsWith(QStringLiteral("shown")))
            << way;
    }
}

TEST(ReleaseNotes, NotesThatAreHardToReadAreReadInTime)
{
    const auto start = std::chrono::steady_clock::now();
    const QString hard[] = {
        filledWith("<td colspan=20480>", "<table><tr>"),
        filledWith("<td rowspan=2000000000>", "<table><tr>"),
        filledWith("<b>", "<style>b>b>b>b>b>b>b>b>b>b>b>b>b>b>b>b>b>b>b>b>b>b>b>b>x>b{}</style>"),
        filledWith("<table><td>"),
        filledWith("<ul>"),
        filledWith("<style>"),
        filledWith("<!--"),
        filledWith("<"),
        filledWith("&"),
    };
    for (const QString &notes : hard) {
        (void)plainTextOfHtml(notes);
    }
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(30));
}

} // namespace tallyfold
