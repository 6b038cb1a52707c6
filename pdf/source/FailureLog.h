#pragma once

#include <exception>
#include <qpdf/QPDFObjectHandle.hh>

namespace tallyfold::pdf {

/// Logs `failure`, an exception of the parser or the standard library, which ended `during`: the code and the
/// offset that the parser gives, or the error of the system. Its text is left out, which may quote the file.
void logFailure(const char *during, const std::exception &failure);

/// Logs that the data of `stream` could not be read to its end or decoded: what was got of it is used.
void logDamagedStream(const QPDFObjectHandle &stream);

} // namespace tallyfold::pdf
