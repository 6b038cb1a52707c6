#include "pdf/syntax/DictionaryWriter.h"

#include "pdf/syntax/Syntax.h"

#include <gtest/gtest.h>

#include <string>

namespace tallyfold::pdf {

TEST(DictionaryWriter, WritesEachKindOfValueBehindItsKey)
{
    std::string out;
    {
        DictionaryWriter entries(out);
        entries.name("/Type", "/Page");
        entries.reference("/Parent", 4);
        entries.integer("/Count", -12);
        entries.number("/ca", 0.25);
        entries.number("/UserUnit", 1.23456789, 6);
        entries.rect("/BBox", {0, -1.5, 612, 792});
        entries.matrix("/Matrix", {1, 0, 0, -1, 0.5, 7});
        entries.text("/Name", u"A\u0416");
        entries.syntax("/ID", "[<00><00>]");
    }
    EXPECT_EQ(out, "<</Type/Page/Parent 4 0 R/Count -12/ca 0.25/UserUnit 1.234568/BBox[0 -1.5 612 792]"
                   "/Matrix[1 0 0 -1 0.5 7]/Name<FEFF00410416>/ID[<00><00>]>>");
}

TEST(DictionaryWriter, ClosesItselfBeforeTheOneAroundItGoesOn)
{
    std::string out = "before ";
    {
        DictionaryWriter outer(out);
        {
            DictionaryWriter inner = outer.dictionary("/Resources");
            inner.dictionary("/ExtGState").reference("/G", 7);
            inner.reference("/Font", 8);
        }
        outer.integer("/Last", 1);
    }
    EXPECT_EQ(out, "before <</Resources<</ExtGState<</G 7 0 R>>/Font 8 0 R>>/Last 1>>");
}

TEST(DictionaryWriter, EscapesAKeyOfTheSourceAndKeepsAnyValueApartFromIt)
{
    std::string out;
    EntryWriter entries(out);
    entries.key("/A b");
    appendReference(out, 3);
    entries.key("/C");
    out.append("null");
    EXPECT_EQ(out, "/A#20b 3 0 R/C null");
}

} // namespace tallyfold::pdf
