#pragma once

#include <QString>

#include <system_error>

namespace tallyfold {

/// A file of the production, other than a copy, that could not be written.
struct FileError {
    QString name;
    std::error_code code;

    bool operator==(const FileError &) const = default;
};

} // namespace tallyfold
