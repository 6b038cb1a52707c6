#include "pdf/text/CharacterMaps.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace tallyfold::pdf {

namespace {

constexpr std::string_view mapStart =
    "/CIDInit/ProcSet findresource begin 12 dict begin begincmap\n"
    "/CIDSystemInfo<</Registry(Adobe)/Ordering(Identity)/Supplement 0>>def\n";
constexpr std::string_view codeSpace = "1 begincodespacerange<0000><FFFF>endcodespacerange\n";
constexpr std::string_view mapEnd = "endcmap CMapName currentdict/CMap defineresource pop end end\n";

/// The sections of a map, which stand between its code space and its end.
std::string sectionsOf(const std::string &map)
{
    const std::size_t start = map.find(codeSpace);
    EXPECT_TRUE(map.starts_with(mapStart) && map.ends_with(mapEnd) && start != std::string::npos) << map;
    const std::size_t first = start + codeSpace.size();
    return map.substr(first, map.size() - mapEnd.size() - first);
}

} // namespace

TEST(CharacterMaps, AnEncodingMapsCodesFromOneOn)
{
    const std::vector<std::uint16_t> cids{7, 65535, 0};
    const std::string map = encodingMap(cids);
    EXPECT_NE(map.find("/CMapName/Codes def/CMapType 1 def\n"), std::string::npos) << map;
    EXPECT_EQ(sectionsOf(map), "3 begincidchar\n<0001>7\n<0002>65535\n<0003>0\nendcidchar\n");
    EXPECT_EQ(sectionsOf(encodingMap({})), "");
    EXPECT_NE(std::string(encodingEntries()).find("/CMapName/Codes"), std::string::npos)
        << "the stream and the map in it have one name";
}

TEST(CharacterMaps, TextsAreUtf16AndACodeWithoutTextIsLeftOut)
{
    const std::vector<std::u16string> texts{u"A", u"", u"ffi", u"\U0001f512"};
    const std::string map = toUnicodeMap(texts);
    EXPECT_NE(map.find("/CMapName/Texts def/CMapType 2 def\n"), std::string::npos) << map;
    EXPECT_EQ(sectionsOf(map),
              "3 beginbfchar\n<0001><0041>\n<0003><006600660069>\n<0004><D83DDD12>\nendbfchar\n");
    EXPECT_EQ(sectionsOf(toUnicodeMap({})), "");
}

TEST(CharacterMaps, ASectionHasAtMostAHundredEntries)
{
    const auto headsOf = [](std::size_t count) {
        const std::string sections = sectionsOf(encodingMap(std::vector<std::uint16_t>(count)));
        std::string heads;
        for (std::size_t at = sections.find(" begin"); at != std::string::npos;
             at = sections.find(" begin", at + 1)) {
            const std::size_t line = at == 0 ? 0 : sections.rfind('\n', at) + 1;
            heads += sections.substr(line, at - line) + ",";
        }
        return heads;
    };
    EXPECT_EQ(headsOf(100), "100,");
    EXPECT_EQ(headsOf(101), "100,1,");
    EXPECT_EQ(headsOf(200), "100,100,");
    EXPECT_NE(sectionsOf(encodingMap(std::vector<std::uint16_t>(101))).find("<0065>0\n"), std::string::npos);
}

} // namespace tallyfold::pdf
