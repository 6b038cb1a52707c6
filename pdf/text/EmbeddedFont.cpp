#include "pdf/text/EmbeddedFont.h"

#include "pdf/log/Log.h"
#include "pdf/syntax/Deflater.h"
#include "pdf/syntax/DictionaryWriter.h"
#include "pdf/syntax/Spelling.h"
#include "pdf/text/CharacterMaps.h"
#include "pdf/text/FontProgram.h"
#include "pdf/text/RecentResults.h"
#include "pdf/text/TextOperators.h"

#include <QCryptographicHash>

#include <algorithm>
#include <harfbuzz/hb.h>
#include <optional>
#include <set>

namespace tallyfold::pdf {

namespace {

/// Widths in the file, in thousandths of the font size.
constexpr int widthDecimals = 3;

/// The tag of a font subset (PDF 1.7, 9.6.4), equal for equal subsets.
std::string subsetTag(const FontProgram &program)
{
    const QByteArray digest = QCryptographicHash::hash(
        QByteArrayView(program.bytes.data(), static_cast<qsizetype>(program.bytes.size())),
        QCryptographicHash::Md5);
    std::string tag;
    for (int index = 0; index < 6; ++index) {
        tag.push_back(static_cast<char>('A' + static_cast<unsigned char>(digest[index]) % 26));
    }
    return tag;
}

int writeProgram(OutputObjects &objects, const FontProgram &program, bool isCff)
{
    const int number = objects.reserve();
    std::string syntax(spelling::compressed);
    EntryWriter entries(syntax);
    if (isCff) {
        entries.name("/Subtype", "/CIDFontType0C");
    } else {
        entries.integer("/Length1", static_cast<std::int64_t>(program.length));
    }
    objects.writeEncodedStream(number, syntax, program.bytes);
    return number;
}

/// `name` begins with its slash. `program` is the object number of the font program, or 0 for a font that
/// could not be subset: its text can still be found.
int writeDescriptor(OutputObjects &objects, const FontFace &face, const std::string &name, int program)
{
    const bool isCff = face.outlines() == FontFace::Outlines::cff;
    // The characters are not those of a standard Latin set (PDF 1.7, 9.8.2).
    constexpr int symbolic = 4;
    constexpr int fixedPitch = 1;
    std::string syntax;
    {
        DictionaryWriter descriptor(syntax);
        descriptor.name("/Type", "/FontDescriptor");
        descriptor.name("/FontName", name);
        descriptor.integer("/Flags", symbolic + (face.isFixedPitch() ? fixedPitch : 0));
        {
            const FontFace::Box box = face.box();
            ArrayWriter sides = descriptor.array("/FontBBox");
            for (const double side : {box.left, box.bottom, box.right, box.top}) {
                sides.number(side, 0);
            }
        }
        descriptor.number("/ItalicAngle", face.italicAngle(), 1);
        descriptor.number("/Ascent", face.ascent(), 0);
        descriptor.number("/Descent", -face.descent(), 0);
        descriptor.number("/CapHeight", face.capHeight(), 0);
        descriptor.integer("/StemV", 80); // Only used to find a substitute font, and the font is embedded.
        if (program != 0) {
            descriptor.reference(isCff ? "/FontFile3" : "/FontFile2", program);
        }
    }
    const int number = objects.reserve();
    objects.writeObject(number, syntax);
    return number;
}

/// Writes a character map, which is compressed once for all files with an equal one; gives its object
/// number.
int writeMap(OutputObjects &objects, std::string_view entries, const std::string &map)
{
    static RecentResults<std::string, std::string> maps;
    const std::string compressed =
        maps.valueFor(map, [&map] { return std::string(Deflater().compress(map)); });
    const int number = objects.reserve();
    objects.writeEncodedStream(number, std::string(entries).append(spelling::compressed), compressed);
    return number;
}

/// Writes widths by CID as `/W` (PDF 1.7, 9.7.4.3).
void writeWidths(EntryWriter &entries, const std::map<std::uint16_t, double> &widths)
{
    ArrayWriter table = entries.array("/W");
    std::optional<ArrayWriter> consecutive;
    int last = -1;
    for (const auto &[cid, width] : widths) {
        if (!consecutive || cid != last + 1) {
            consecutive.reset();
            table.integer(cid);
            consecutive.emplace(table.out());
        }
        consecutive->number(width, widthDecimals);
        last = cid;
    }
}

} // namespace

EmbeddedFont::EmbeddedFont(std::shared_ptr<const FontFace> face) : m_face(std::move(face)) {}

const FontFace &EmbeddedFont::face() const
{
    return *m_face;
}

const EmbeddedFont::Place &EmbeddedFont::add(std::uint32_t glyph, const std::u16string &text)
{
    const auto [known, isNew] = m_places.try_emplace({glyph, text});
    if (isNew) {
        const std::uint16_t layerNumber = m_layersOfGlyph[glyph]++;
        if (m_layers.size() <= layerNumber) {
            m_layers.emplace_back();
        }
        Layer &layer = m_layers[layerNumber];
        layer.glyphs.push_back(glyph);
        layer.texts.push_back(text);
        // A layer has no more codes than the font has glyphs, at most 65,535.
        known->second = {layerNumber, static_cast<std::uint16_t>(layer.glyphs.size()),
                         m_face->advance(glyph)};
    }
    return known->second;
}

const EmbeddedFont::Place &EmbeddedFont::placeOf(std::uint32_t glyph, const std::u16string &text)
{
    const bool isDigit = text.size() == 1 && text.front() >= u'0' && text.front() <= u'9';
    if (isDigit && !m_hasDigits) {
        m_hasDigits = true;
        for (char16_t digit = u'0'; digit <= u'9'; ++digit) {
            hb_codepoint_t nominal = 0;
            if (hb_font_get_nominal_glyph(m_face->font(), digit, &nominal) != 0) {
                add(nominal, std::u16string(1, digit));
            }
        }
    }
    return add(glyph, text);
}

void EmbeddedFont::write(OutputObjects &objects, std::size_t ownNumber, EntryWriter &resources) const
{
    std::set<std::uint32_t> wanted;
    for (const Layer &layer : m_layers) {
        wanted.insert(layer.glyphs.begin(), layer.glyphs.end());
    }
    const std::vector<std::uint32_t> glyphs(wanted.begin(), wanted.end());
    const std::shared_ptr<const FontProgram> program = subset(m_face, glyphs);
    if (!program) {
        qCInfo(pdfLog) << "a font cannot be embedded:" << m_face->postScriptName().c_str();
    }
    std::map<std::uint32_t, std::uint16_t> cids;
    std::map<std::uint16_t, double> widths;
    for (std::size_t index = 0; program && index < glyphs.size(); ++index) {
        cids[glyphs[index]] = program->cids[index];
        widths[program->cids[index]] = m_face->advance(glyphs[index]);
    }
    const bool isCff = m_face->outlines() == FontFace::Outlines::cff;
    const std::string name =
        "/" + (program ? subsetTag(*program) + "+" : std::string()) + m_face->postScriptName();

    const int programNumber = program ? writeProgram(objects, *program, isCff) : 0;
    const int descriptor = writeDescriptor(objects, *m_face, name, programNumber);
    const int descendant = objects.reserve();
    std::string syntax;
    {
        DictionaryWriter cidFont(syntax);
        cidFont.name("/Type", "/Font");
        cidFont.name("/Subtype", isCff ? "/CIDFontType0" : "/CIDFontType2");
        cidFont.name("/BaseFont", name);
        {
            DictionaryWriter system = cidFont.dictionary("/CIDSystemInfo");
            system.syntax("/Registry", "(Adobe)");
            system.syntax("/Ordering", "(Identity)");
            system.integer("/Supplement", 0);
        }
        cidFont.reference("/FontDescriptor", descriptor);
        if (!isCff) {
            cidFont.name("/CIDToGIDMap", "/Identity");
        }
        writeWidths(cidFont, widths);
    }
    objects.writeObject(descendant, syntax);

    for (std::size_t index = 0; index < m_layers.size(); ++index) {
        std::vector<std::uint16_t> layerCids;
        for (const std::uint32_t glyph : m_layers[index].glyphs) {
            layerCids.push_back(cids[glyph]);
        }
        const int encoding = writeMap(objects, encodingEntries(), encodingMap(layerCids));
        const int toUnicode = writeMap(objects, {}, toUnicodeMap(m_layers[index].texts));
        const int number = objects.reserve();
        syntax.clear();
        {
            DictionaryWriter font(syntax);
            font.name("/Type", "/Font");
            font.name("/Subtype", "/Type0");
            font.name("/BaseFont", name);
            font.reference("/Encoding", encoding);
            font.array("/DescendantFonts").reference(descendant);
            font.reference("/ToUnicode", toUnicode);
        }
        objects.writeObject(number, syntax);
        resources.reference(fontResourceName(ownNumber, index), number);
    }
}

} // namespace tallyfold::pdf
