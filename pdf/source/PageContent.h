#pragma once

#include <qpdf/QPDFObjectHandle.hh>

#include <string>
#include <vector>

namespace tallyfold::pdf {

class Document;

/// More decoded content than the most detailed map has; beyond it lies data made to fill the memory.
inline constexpr std::size_t maxContentSize = 256 * 1024 * 1024;

/// The content streams that a page's `/Contents` names, in order; what is not a stream is left out, as
/// viewers do. `contents` is the entry as it stands: a stream, an array of them, or anything else.
[[nodiscard]] std::vector<QPDFObjectHandle> contentStreams(Document &document,
                                                           const QPDFObjectHandle &contents);

/// The data of several content streams, decoded and joined by line ends: streams may only be cut between
/// tokens (PDF 1.7, 7.8.2). A stream whose filters are not known or whose data is damaged gives what can be
/// decoded of it. Throws std::length_error when there is more than `maxSize` bytes, which by
/// default is more than a page can reasonably have.
[[nodiscard]] std::string joinedContent(const std::vector<QPDFObjectHandle> &streams,
                                        std::size_t maxSize = maxContentSize);

} // namespace tallyfold::pdf
