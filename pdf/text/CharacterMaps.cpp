#include "pdf/text/CharacterMaps.h"

#include "pdf/syntax/NumberFormat.h"
#include "pdf/syntax/Syntax.h"

#include <algorithm>
#include <vector>

namespace tallyfold::pdf {

namespace {

/// The limit of entries in a section of a CMap (Adobe Technical Note 5014).
constexpr std::size_t entriesInASection = 100;

constexpr std::string_view mapStart =
    "/CIDInit/ProcSet findresource begin 12 dict begin begincmap\n"
    "/CIDSystemInfo<</Registry(Adobe)/Ordering(Identity)/Supplement 0>>def\n";
constexpr std::string_view mapSpace = "1 begincodespacerange<0000><FFFF>endcodespacerange\n";
constexpr std::string_view mapEnd = "endcmap CMapName currentdict/CMap defineresource pop end end\n";

std::string mapOf(std::string_view head, std::string_view sectionKind,
                  const std::vector<std::string> &entries)
{
    std::string map(mapStart);
    map.append(head).append(mapSpace);
    for (std::size_t start = 0; start < entries.size(); start += entriesInASection) {
        const std::size_t count = std::min(entriesInASection, entries.size() - start);
        appendInteger(map, static_cast<std::int64_t>(count));
        map.append(" begin").append(sectionKind).push_back('\n');
        for (std::size_t index = start; index < start + count; ++index) {
            map.append(entries[index]).push_back('\n');
        }
        map.append("end").append(sectionKind).push_back('\n');
    }
    return map.append(mapEnd);
}

} // namespace

std::string_view encodingEntries()
{
    return "/Type/CMap/CMapName/Codes/CIDSystemInfo<</Registry(Adobe)/Ordering(Identity)/Supplement 0>>";
}

std::string encodingMap(std::span<const std::uint16_t> cids)
{
    std::vector<std::string> entries;
    std::uint16_t code = 0;
    for (const std::uint16_t cid : cids) {
        std::string entry = "<";
        appendHex(entry, ++code);
        entry.append(">");
        appendInteger(entry, cid);
        entries.push_back(std::move(entry));
    }
    return mapOf("/CMapName/Codes def/CMapType 1 def\n", "cidchar", entries);
}

std::string toUnicodeMap(std::span<const std::u16string> texts)
{
    std::vector<std::string> entries;
    std::uint16_t code = 0;
    for (const std::u16string &text : texts) {
        ++code;
        if (text.empty()) {
            continue;
        }
        std::string entry = "<";
        appendHex(entry, code);
        entry.append("><");
        for (const char16_t unit : text) {
            appendHex(entry, unit);
        }
        entry.push_back('>');
        entries.push_back(std::move(entry));
    }
    return mapOf("/CMapName/Texts def/CMapType 2 def\n", "bfchar", entries);
}

} // namespace tallyfold::pdf
