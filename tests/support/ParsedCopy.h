#pragma once

#include "tests/support/FlatCopy.h"
#include "tests/support/TemporaryFolder.h"

#include <qpdf/QPDF.hh>

#include <cstddef>
#include <string_view>

namespace tallyfold::tests {

/// The copy of a file without any stamp, parsed by qpdf.
class ParsedCopy {
public:
    /// Of `source`, the bytes of a file. Ends the test program when there is no copy.
    explicit ParsedCopy(std::string_view source)
    {
        m_copy.processFile(flatCopy(m_folder.path(), source).c_str());
    }

    /// Whether the parser has given no warning so far.
    [[nodiscard]] bool isSound()
    {
        return m_copy.getWarnings().empty();
    }

    [[nodiscard]] QPDFObjectHandle catalog()
    {
        return m_copy.getRoot();
    }

    [[nodiscard]] QPDFObjectHandle page(int index = 0)
    {
        return m_copy.getAllPages().at(static_cast<std::size_t>(index));
    }

    /// The resources of the form that shows the page of the source.
    [[nodiscard]] QPDFObjectHandle resources(int index = 0)
    {
        QPDFObjectHandle form = page(index).getKey("/Resources").getKey("/XObject").getKey("/P");
        return form.getDict().getKey("/Resources");
    }

private:
    TemporaryFolder m_folder;
    QPDF m_copy;
};

} // namespace tallyfold::tests
