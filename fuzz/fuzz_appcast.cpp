// Any bytes as an announcement of newer versions: read within its limits, and as text for the parsers of its
// parts.

#include "ui/updates/AppVersion.h"
#include "ui/updates/Appcast.h"
#include "ui/updates/ReleaseNotes.h"

#include <QByteArray>
#include <QGuiApplication>
#include <QList>
#include <QString>

#include <algorithm>
#include <array>
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
    require(items.size() <= maxAppcastItems);
    for (const AppcastItem &item : items) {
        require(item.notes.size() <= maxAppcastNotes);
        require(item.link.isEmpty() || (item.link.isValid() && item.link.scheme() == u"https" &&
                                        !item.link.host().isEmpty() && item.link.userInfo().isEmpty()));
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
    // Texts with fonts need one, though nothing is shown.
    static int count = 3;
    static std::array<char *, 4> arguments{const_cast<char *>("fuzz"), const_cast<char *>("-platform"),
                                           const_cast<char *>("offscreen"), nullptr};
    static const QGuiApplication application(count, arguments.data());

    const QByteArray bytes(reinterpret_cast<const char *>(data), static_cast<qsizetype>(size));
    if (const auto items = parseAppcast(bytes)) {
        checkItems(*items);
    }
    (void)evaluateFeed(bytes, AppVersion());
    const QString text = QString::fromUtf8(bytes);
    const QString notes = text.left(maxAppcastNotes);
    require(plainTextOfHtml(notes).size() <= 2 * notes.size() + 2); // An entry gets a bullet.
    checkVersions(text);
    return 0;
}
