#include "ui/updates/Judgement.h"

#include <QtGlobal>

namespace tallyfold {

namespace {

#if defined(Q_OS_MACOS)
constexpr QStringView thisSystem = u"macos";
#elif defined(Q_OS_WINDOWS)
constexpr QStringView thisSystem = u"windows";
#else
constexpr QStringView thisSystem = u"linux";
#endif

} // namespace

std::optional<AppVersion> versionOf(const AppcastItem &item)
{
    const std::optional<AppVersion> named = AppVersion::parse(item.shortVersion);
    return named ? named : AppVersion::parse(item.version);
}

bool isForThisSystem(const AppcastItem &item)
{
    return item.os.isEmpty() || item.os.compare(thisSystem, Qt::CaseInsensitive) == 0;
}

UpdateOutcome judge(const QByteArray &bytes, const AppVersion &current)
{
    const auto parsed = parseAppcast(bytes);
    const auto *items = std::get_if<std::vector<AppcastItem>>(&parsed);
    if (items == nullptr) {
        return UpdateCheckFailed{UpdateCheckFailed::Reason::badFeed};
    }
    bool hasItems = false;
    std::optional<AppVersion> newest;
    const AppcastItem *newestItem = nullptr;
    for (const AppcastItem &item : *items) {
        if (!isForThisSystem(item)) {
            continue;
        }
        hasItems = true;
        const std::optional<AppVersion> version = versionOf(item);
        if (version && (!newest || *version > *newest)) {
            newest = version;
            newestItem = &item;
        }
    }
    if (!newest) {
        return hasItems ? UpdateOutcome(UpdateCheckFailed{UpdateCheckFailed::Reason::badFeed})
                        : UpdateOutcome(UpToDate{});
    }
    if (*newest <= current) {
        return UpToDate{};
    }
    return NewerVersion{newest->text(), newestItem->notes, newestItem->link};
}

} // namespace tallyfold
