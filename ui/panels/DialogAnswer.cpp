#include "ui/panels/DialogAnswer.h"

#include "app/UriList.h"
#include "core/SourceFile.h"

#include <QString>

#include <string>
#include <system_error>
#include <utility>
#include <vector>

namespace tallyfold {

namespace {

namespace fs = std::filesystem;

QString textOf(const fs::path &name)
{
    return QString::fromUtf8(name.native().c_str());
}

/// Whether characters of `name` may stand for bytes that are no text. Bytes that came as they are do not.
bool mayStandForBytes(const fs::path &name)
{
    return name.native().find("\xef\xbf\xbd") != std::string::npos;
}

/// What of `folder` reads as `name` does, which has characters that may stand for bytes. `name` itself where
/// the folder cannot be listed.
std::vector<fs::path> alike(const fs::path &folder, const fs::path &name)
{
    std::vector<fs::path> found;
    std::error_code error;
    fs::directory_iterator entry(folder, error);
    for (; !error && entry != fs::directory_iterator(); entry.increment(error)) {
        if (textOf(entry->path().filename()) == textOf(name)) {
            found.push_back(entry->path());
        }
    }
    return error ? std::vector{folder / name} : found;
}

} // namespace

std::optional<fs::path> itemCalled(const fs::path &named)
{
    std::vector<fs::path> candidates{fs::path()};
    for (const fs::path &name : named) {
        std::vector<fs::path> next;
        for (const fs::path &candidate : candidates) {
            if (mayStandForBytes(name)) {
                for (fs::path &one : alike(candidate, name)) {
                    next.push_back(std::move(one));
                }
            } else {
                next.push_back(candidate / name);
            }
        }
        candidates = std::move(next);
    }
    std::erase_if(candidates, [](const fs::path &candidate) {
        std::error_code error;
        return !fs::exists(candidate, error);
    });
    return candidates.size() == 1 ? std::optional(candidates.front()) : std::nullopt;
}

PanelAnswer answerOf(const QList<QUrl> &urls)
{
    PanelAnswer answer;
    for (const QUrl &url : urls) {
        // Encoded, as the bytes are there that some dialogs do give.
        const std::vector<fs::path> paths = localPathsIn(url.toEncoded());
        if (paths.empty()) {
            answer.lost.append(url.toDisplayString());
        } else if (std::optional<fs::path> item = itemCalled(paths.front())) {
            answer.chosen.push_back(std::move(*item));
        } else {
            answer.lost.append(displayName(paths.front()));
        }
    }
    return answer;
}

} // namespace tallyfold
