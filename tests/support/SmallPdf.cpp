#include "tests/support/SmallPdf.h"

#include "tests/support/PdfBuilder.h"

namespace tallyfold::tests {

std::string showText(double x, double y, const std::string &text)
{
    return "BT /F 10 Tf " + std::to_string(x) + " " + std::to_string(y) + " Td (" + text + ") Tj ET\n";
}

std::string smallPdf(const std::vector<SmallPage> &pages)
{
    PdfBuilder builder;
    const auto addFont = [&](const std::string &name) {
        return reference(
            builder.add("<</Type/Font/Subtype/Type1/Encoding/WinAnsiEncoding/BaseFont/" + name + ">>"));
    };
    const std::string helvetica = addFont("Helvetica");
    const std::string courier = addFont("Courier");
    builder.inherit("/Resources<</Font<</F " + helvetica + "/C " + courier + ">>>>");
    for (const SmallPage &page : pages) {
        const int content = builder.addStream("", page.content);
        builder.addPage("/MediaBox[" + page.mediaBox + "]/Contents " + reference(content) + page.entries);
    }
    return builder.file();
}

} // namespace tallyfold::tests
