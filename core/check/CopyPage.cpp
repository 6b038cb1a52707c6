#include "core/check/CopyPage.h"

#include "core/SourceFile.h"
#include "pdf/viewing/PageReader.h"

#include <algorithm>
#include <cmath>
#include <memory>
#include <system_error>

namespace tallyfold::check {

namespace fs = std::filesystem;

namespace {

/// A page that is longer is a mistake or a trap.
constexpr double mostHeights = 8; // Widths.

QString composed(const QString &name)
{
    return name.normalized(QString::NormalizationForm_C);
}

/// The file of `folder` that is shown as `name`; empty when there is none. Its bytes need not be text, and
/// its characters may be composed otherwise.
fs::path fileCalled(const fs::path &folder, const QString &name)
{
    fs::path path = folder / name.toStdString();
    std::error_code error;
    if (fs::exists(path, error)) {
        return path;
    }
    fs::directory_iterator entry(folder, error);
    for (; !error && entry != fs::directory_iterator(); entry.increment(error)) {
        if (composed(displayName(entry->path())) == composed(name)) {
            return entry->path();
        }
    }
    return {};
}

std::optional<pdf::Bitmap> pictureOf(pdf::PageReader &reader, int index, std::int64_t width)
{
    const std::optional<pdf::Size> size = reader.mediaSize(index);
    if (!size || !(size->width > 0) || !(size->height > 0)) {
        return std::nullopt;
    }
    const double scale = static_cast<double>(width) / size->width;
    const double height = std::min(std::ceil(size->height * scale), mostHeights * static_cast<double>(width));
    return reader.render(index, static_cast<int>(width), static_cast<int>(height), scale);
}

} // namespace

std::optional<CopyPage> copyPage(const fs::path &folder, const QString &name, std::int64_t page,
                                 std::int64_t width, const std::stop_token &givenUp)
{
    const fs::path path = fileCalled(folder, name);
    const std::unique_ptr<pdf::PageReader> reader =
        path.empty() ? nullptr : pdf::PageReader::open(path, givenUp);
    if (!reader) {
        return std::nullopt;
    }
    CopyPage shown{reader->pageCount(), std::nullopt};
    if (page >= 1 && page <= shown.pages) {
        shown.picture = pictureOf(*reader, static_cast<int>(page - 1), width);
    }
    return shown;
}

} // namespace tallyfold::check
