#pragma once

namespace tallyfold {

/// Why bytes are no appcast that is read.
enum class AppcastFault {
    malformed,    ///< No UTF-8, or no well-formed XML.
    doctype,      ///< Declares a document type, which could define entities.
    tooDeep,      ///< Elements in elements in elements.
    tooLong,      ///< A tag or a short text that is not short.
    tooManyItems, ///< More releases than a program has.
    notAnAppcast, ///< XML of another kind.
};

} // namespace tallyfold
