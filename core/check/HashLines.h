#pragma once

#include "core/check/Sha256.h"

#include <QByteArray>
#include <QByteArrayView>

#include <cstdint>
#include <map>
#include <string>
#include <vector>

namespace tallyfold::check {

/// A line of a list as GNU coreutils write it: a name with a backslash, LF or CR has these escaped, and a
/// backslash before the digest.
[[nodiscard]] QByteArray hashLine(const Sha256 &digest, const std::string &name);

/// What a list tells.
struct HashLines {
    std::map<std::string, Sha256> digests;        ///< By the names of files.
    std::vector<std::int64_t> linesNotUnderstood; ///< From 1. A name that comes again is one.

    /// Reads the bytes of a list, of which lines may end with CR LF and names begin with an asterisk.
    [[nodiscard]] static HashLines of(QByteArrayView bytes);
};

} // namespace tallyfold::check
