#include "pdf/EmbeddedFont.h"

#include "pdf/CharacterMaps.h"
#include "pdf/FontProgram.h"
#include "pdf/NumberFormat.h"

#include <QCryptographicHash>

#include <harfbuzz/hb.h>
#include <string>

namespace tallyfold::pdf {

namespace {

/// Widths in the file, in thousandths of the font size.
constexpr int widthDecimals = 3;

/// Six capitals that tell subsets of one font apart (PDF 1.7, 9.6.4), the same for the same subset.
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

std::string referenceTo(int number)
{
    std::string text;
    appendInteger(text, number);
    return text + " 0 R";
}

} // namespace

EmbeddedFont::EmbeddedFont(std::shared_ptr<const FontFace> face) : m_face(std::move(face)) {}

const FontFace &EmbeddedFont::face() const
{
    return *m_face;
}

std::uint16_t EmbeddedFont::add(std::uint32_t glyph, const QString &text)
{
    constexpr std::size_t mostCodes = 0xffff;
    const auto [place, isNew] = m_codes.try_emplace({glyph, text}, std::uint16_t{0});
    if (isNew && m_uses.size() < mostCodes) {
        m_uses.push_back({glyph, text});
        place->second = static_cast<std::uint16_t>(m_uses.size());
    }
    return place->second;
}

std::uint16_t EmbeddedFont::codeFor(std::uint32_t glyph, const QString &text)
{
    const bool isDigit = text.size() == 1 && text.front() >= u'0' && text.front() <= u'9';
    if (isDigit && !m_hasDigits) {
        m_hasDigits = true;
        for (char16_t digit = u'0'; digit <= u'9'; ++digit) {
            hb_codepoint_t nominal = 0;
            if (hb_font_get_nominal_glyph(m_face->font(), digit, &nominal) != 0) {
                add(nominal, QString(QChar(digit)));
            }
        }
    }
    return add(glyph, text);
}

void EmbeddedFont::write(OutputObjects &objects, int number) const
{
    std::vector<std::uint32_t> glyphs;
    std::vector<QString> texts;
    for (const Use &use : m_uses) {
        glyphs.push_back(use.glyph);
        texts.push_back(use.text);
    }
    const std::shared_ptr<const FontProgram> program = subset(m_face, glyphs);
    if (!program) { // A font that was opened and shaped with, yet cannot be cut: the text is still there to
                    // be found.
        objects.writeObject(number, "<</Type/Font/Subtype/Type1/BaseFont/Helvetica>>");
        return;
    }
    const bool isCff = m_face->outlines() == FontFace::Outlines::cff;
    const std::string name = subsetTag(*program) + "+" + m_face->postScriptName();

    const int file = objects.reserve();
    std::string fileEntries;
    if (isCff) {
        fileEntries = "/Subtype/CIDFontType0C";
    } else {
        fileEntries = "/Length1 ";
        appendInteger(fileEntries, static_cast<std::int64_t>(program->length));
    }
    objects.writeEncodedStream(file, fileEntries + "/Filter/FlateDecode", program->bytes);

    const int encoding = objects.reserve();
    objects.writeStream(encoding, encodingEntries(), encodingMap(program->cids));
    const int toUnicode = objects.reserve();
    objects.writeStream(toUnicode, {}, toUnicodeMap(texts));

    const int descriptor = objects.reserve();
    std::string description = "<</Type/FontDescriptor/FontName/" + name + "/Flags 4/FontBBox[0 ";
    appendNumber(description, -m_face->descent(), 0);
    description.append(" 1000 ");
    appendNumber(description, m_face->ascent(), 0);
    description.append("]/ItalicAngle 0/Ascent ");
    appendNumber(description, m_face->ascent(), 0);
    description.append("/Descent ");
    appendNumber(description, -m_face->descent(), 0);
    description.append("/CapHeight ");
    appendNumber(description, m_face->ascent(), 0);
    description.append("/StemV 80");
    description.append(isCff ? "/FontFile3 " : "/FontFile2 ").append(referenceTo(file)).append(">>");
    objects.writeObject(descriptor, description);

    const int descendant = objects.reserve();
    std::map<std::uint16_t, double> widths;
    for (std::size_t index = 0; index < glyphs.size(); ++index) {
        widths[program->cids[index]] = m_face->advance(glyphs[index]);
    }
    std::string cidFont =
        isCff ? "<</Type/Font/Subtype/CIDFontType0/BaseFont/" : "<</Type/Font/Subtype/CIDFontType2/BaseFont/";
    cidFont.append(name).append(
        "/CIDSystemInfo<</Registry(Adobe)/Ordering(Identity)/Supplement 0>>/FontDescriptor ");
    cidFont.append(referenceTo(descriptor)).append(isCff ? "/W[" : "/CIDToGIDMap/Identity/W[");
    for (const auto &[cid, width] : widths) {
        appendInteger(cidFont, cid);
        cidFont.push_back('[');
        appendNumber(cidFont, width, widthDecimals);
        cidFont.push_back(']');
    }
    cidFont.append("]>>");
    objects.writeObject(descendant, cidFont);

    objects.writeObject(number, "<</Type/Font/Subtype/Type0/BaseFont/" + name + "/Encoding " +
                                    referenceTo(encoding) + "/DescendantFonts[" + referenceTo(descendant) +
                                    "]/ToUnicode " + referenceTo(toUnicode) + ">>");
}

} // namespace tallyfold::pdf
