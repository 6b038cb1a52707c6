#include "core/PdfEnding.h"

namespace tallyfold {

bool hasPdfEnding(std::string_view name)
{
    if (name.size() < pdfEnding.size()) {
        return false;
    }
    const std::string_view end = name.substr(name.size() - pdfEnding.size());
    return QLatin1StringView(end.data(), static_cast<qsizetype>(end.size()))
               .compare(QLatin1StringView(pdfEnding.data(), static_cast<qsizetype>(pdfEnding.size())),
                        Qt::CaseInsensitive) == 0;
}

bool hasPdfEnding(QStringView name)
{
    return name.endsWith(QLatin1StringView(pdfEnding.data(), static_cast<qsizetype>(pdfEnding.size())),
                         Qt::CaseInsensitive);
}

} // namespace tallyfold
