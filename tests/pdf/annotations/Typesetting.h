#pragma once

#include "files/MemorySink.h"
#include "pdf/syntax/StreamingOutput.h"
#include "pdf/text/FontCatalog.h"
#include "pdf/text/TextFonts.h"

#include <regex>
#include <string>
#include <vector>

namespace tallyfold::pdf {

/// Fonts of a file that nobody reads, for functions that set text.
class Typesetting {
public:
    TextFonts &fonts()
    {
        return m_fonts;
    }

    [[nodiscard]] double widthOf(const QString &text, double size)
    {
        return m_fonts.shape(text, QStringLiteral("Helvetica"), size).width;
    }

private:
    files::MemorySink m_sink;
    StreamingOutput m_output{m_sink};
    TextFonts m_fonts{m_output, FontCatalog::installed()};
};

/// Where a text begins and how large it is, in points.
struct SetText {
    double x = 0;
    double y = 0;
    double size = 0;
};

/// The texts that `content` shows, in its order.
inline std::vector<SetText> textsIn(const std::string &content)
{
    static const std::regex pattern("BT (\\S+) (\\S+) Td\n(?:[^E]|E[^T])*?/T\\w+ (\\S+) Tf\n");
    std::vector<SetText> texts;
    for (std::sregex_iterator match(content.begin(), content.end(), pattern), end; match != end; ++match) {
        texts.push_back({std::stod((*match)[1]), std::stod((*match)[2]), std::stod((*match)[3])});
    }
    return texts;
}

} // namespace tallyfold::pdf
