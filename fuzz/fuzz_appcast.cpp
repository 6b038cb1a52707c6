// Any bytes as an announcement of newer versions: read within its limits, and as text for the parsers of its
// parts.

#include "ui/updates/AppVersion.h"
#include "ui/updates/Appcast.h"
#include "ui/updates/HtmlText.h"
#include "ui/updates/Judgement.h"
#include "ui/updates/MarkupGuard.h"

#include <QByteArray>
#include <QList>
#include <QString>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>

using namespace tallyfold;

namespace {

void require(bool condition)
{
    if (!condition) {
        std::abort();
    }
}

void checkItems(const std::vector<AppcastItem> &items)
{
    require(items.size() <= mostAppcastItems);
    for (const AppcastItem &item : items) {
        require(std::max({item.title.size(), item.version.size(), item.shortVersion.size(),
                          item.os.size()}) <= longestAppcastText);
        require(item.notes.size() <= longestAppcastNotes);
        require(item.link.isEmpty() || (item.link.isValid() && item.link.scheme() == u"https" &&
                                        !item.link.host().isEmpty() && item.link.userInfo().isEmpty()));
        (void)versionOf(item);
        (void)isForThisSystem(item);
    }
}

/// Versions are themselves when written out, and each pair of them has one order.
void checkVersions(const QString &text)
{
    constexpr qsizetype mostVersions = 16;
    std::vector<AppVersion> versions;
    for (const QString &line : text.split(u'\n').first(std::min(text.count(u'\n') + 1, mostVersions))) {
        if (const std::optional<AppVersion> version = AppVersion::parse(line)) {
            require(AppVersion::parse(version->text()) == version);
            versions.push_back(*version);
        }
    }
    for (const AppVersion &first : versions) {
        for (const AppVersion &second : versions) {
            require((first < second) == (second > first));
            require((first == second) == (!(first < second) && !(second < first)));
        }
    }
    std::sort(versions.begin(), versions.end());
    require(std::is_sorted(versions.begin(), versions.end()));
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const QByteArray bytes(reinterpret_cast<const char *>(data), static_cast<qsizetype>(size));
    const auto feed = parseAppcast(bytes);
    if (const auto *items = std::get_if<std::vector<AppcastItem>>(&feed)) {
        checkItems(*items);
    }
    (void)judge(bytes, AppVersion());
    const QString text = QString::fromUtf8(bytes);
    (void)markupFaultOf(text);
    require(plainTextOfHtml(text).size() <= text.size() + 1); // An entity is longer than what it stands for.
    checkVersions(text);
    return 0;
}
