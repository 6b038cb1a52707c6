#include "pdf/copy/ResourceUse.h"

#include "pdf/source/RawStream.h"

#include <algorithm>
#include <array>
#include <stdexcept>
#include <string>

namespace tallyfold::pdf {

namespace {

/// Longer content is assumed to name some, which at worst copies it once a page.
constexpr std::size_t maxContent = 4 * 1024 * 1024;

template <typename List> bool contains(const List &list, std::string_view item)
{
    return std::find(list.begin(), list.end(), item) != list.end();
}

/// Device colour spaces and their abbreviations in inline images (PDF 1.7, tables 62 and 94), which are no
/// resources.
bool isBuiltInColorSpace(std::string_view name)
{
    constexpr std::array<std::string_view, 9> names{
        "/DeviceGray", "/DeviceRGB", "/DeviceCMYK", "/Pattern", "/Indexed", "/G", "/RGB", "/CMYK", "/I"};
    return contains(names, name);
}

/// A scanner of content that tells names from operators.
class Tokens {
public:
    explicit Tokens(std::string_view content) : m_rest(content) {}

    /// The next name, with its "/", or other token; empty at the end. Brackets are tokens of one character.
    std::string_view next()
    {
        constexpr std::string_view white{"\0\t\n\f\r ", 6};
        constexpr std::string_view delimiters{"\0\t\n\f\r ()<>[]{}/%", 16};
        m_rest.remove_prefix(std::min(m_rest.find_first_not_of(white), m_rest.size()));
        if (m_rest.empty()) {
            return {};
        }
        const std::size_t length = std::min(m_rest.find_first_of(delimiters, 1), m_rest.size());
        const bool isBracket =
            m_rest.front() != '/' && delimiters.find(m_rest.front()) != std::string_view::npos;
        const std::string_view token = m_rest.substr(0, isBracket ? 1 : length);
        m_rest.remove_prefix(token.size());
        return token;
    }

private:
    std::string_view m_rest;
};

/// The decoded data of `stream`; nothing beyond the limit.
bool decode(QPDFObjectHandle stream, std::string &content)
{
    bool isTooLong = false;
    RawStream pipe([&](std::string_view bytes) {
        if (content.size() + bytes.size() > maxContent) {
            isTooLong = true; // The parser catches what its pipeline throws, but stops.
            throw std::length_error("content");
        }
        content.append(bytes);
    });
    stream.pipeStreamData(&pipe, 0, qpdf_dl_specialized, true, false);
    return !isTooLong;
}

bool contentNamesResources(const QPDFObjectHandle &stream)
{
    std::string content;
    return !decode(stream, content) || namesResources(content);
}

bool anyGlyphNamesResources(QPDFObjectHandle font)
{
    QPDFObjectHandle glyphs = font.getKey("/CharProcs");
    if (!glyphs.isDictionary()) {
        return false;
    }
    const auto procedures = glyphs.getDictAsMap();
    return std::any_of(procedures.begin(), procedures.end(), [](const auto &glyph) {
        return QPDFObjectHandle(glyph.second).isStream() && contentNamesResources(glyph.second);
    });
}

} // namespace

bool namesResources(std::string_view content)
{
    constexpr std::array<std::string_view, 4> always{"Do", "Tf", "gs", "sh"};
    constexpr std::array<std::string_view, 4> afterName{"scn", "SCN", "BDC", "DP"};
    Tokens tokens(content);
    std::string_view previous;
    for (std::string_view token = tokens.next(); !token.empty(); token = tokens.next()) {
        const bool isAfterName = previous.starts_with('/');
        const bool isColorSpace = token == "cs" || token == "CS";
        const bool isOfInlineImage = previous == "/CS" || previous == "/ColorSpace";
        if (contains(always, token) || (isAfterName && contains(afterName, token)) ||
            (isColorSpace && !isBuiltInColorSpace(previous)) ||
            (isOfInlineImage && token.starts_with('/') && !isBuiltInColorSpace(token))) {
            return true;
        }
        previous = token;
    }
    return false;
}

bool borrowsResources(QPDFObjectHandle object, bool isForm)
{
    QPDFObjectHandle dictionary = object.isStream() ? object.getDict() : object;
    if (!dictionary.isDictionary() || dictionary.getKey("/Resources").isDictionary()) {
        return false;
    }
    if (!object.isStream()) {
        return dictionary.getKey("/Subtype").isNameAndEquals("/Type3") && anyGlyphNamesResources(dictionary);
    }
    QPDFObjectHandle patternType = dictionary.getKey("/PatternType");
    const bool isTiling = patternType.isInteger() && patternType.getIntValue() == 1;
    return (isForm || isTiling || dictionary.getKey("/Subtype").isNameAndEquals("/Form")) &&
           contentNamesResources(object);
}

} // namespace tallyfold::pdf
