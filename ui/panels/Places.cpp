#include "ui/panels/Places.h"

#include "app/UriList.h"
#include "core/SourceFile.h"
#include "ui/text/Words.h"

#include <QDir>
#include <QFile>
#include <QStandardPaths>
#include <QStorageInfo>
#include <QXmlStreamReader>

#include <algorithm>
#include <array>
#include <system_error>

namespace tallyfold {

namespace {

std::filesystem::path pathOf(const QString &text)
{
    return QFile::encodeName(text).toStdString();
}

/// What is in a file, if it can be read.
QByteArray contentOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void addPlace(std::vector<Place> &places, const QByteArray &uri, const QString &title)
{
    for (const std::filesystem::path &folder : localPathsIn(uri)) {
        places.push_back({title.isEmpty() ? displayName(folder) : title, folder});
    }
}

std::vector<Place> ownFolders()
{
    std::vector<Place> places{{words(QT_TRANSLATE_NOOP("Words", "Home")), pathOf(QDir::homePath())}};
    for (const auto location : {QStandardPaths::DesktopLocation, QStandardPaths::DocumentsLocation,
                                QStandardPaths::DownloadLocation}) {
        places.push_back(
            {QStandardPaths::displayName(location), pathOf(QStandardPaths::writableLocation(location))});
    }
    return places;
}

std::vector<Place> mountedVolumes()
{
    std::vector<Place> places;
    for (const QStorageInfo &volume : QStorageInfo::mountedVolumes()) {
        const std::filesystem::path root = pathOf(volume.rootPath());
        if (isUsersVolume(root)) {
            places.push_back(
                {volume.displayName() == volume.rootPath() ? displayName(root) : volume.displayName(), root});
        }
    }
    return places;
}

} // namespace

std::vector<Place> gtkBookmarks(const QByteArray &content)
{
    std::vector<Place> places;
    for (const QByteArray &line : content.split('\n')) {
        const qsizetype space = line.indexOf(' ');
        const QByteArray title = space < 0 ? QByteArray() : line.mid(space + 1).trimmed();
        addPlace(places, space < 0 ? line : line.left(space), QString::fromUtf8(title));
    }
    return places;
}

std::vector<Place> kdePlaces(const QByteArray &content)
{
    std::vector<Place> places;
    QXmlStreamReader reader(content);
    QByteArray uri;
    QString title;
    bool isHidden = false;
    while (!reader.atEnd()) {
        reader.readNext();
        const bool isBookmark = reader.name() == u"bookmark";
        if (reader.isStartElement() && isBookmark) {
            uri = reader.attributes().value(QLatin1String("href")).toUtf8();
            title.clear();
            isHidden = false;
        } else if (reader.isStartElement() && reader.name() == u"title") {
            title = reader.readElementText();
        } else if (reader.isStartElement() && reader.name() == u"isHidden") {
            isHidden = reader.readElementText() == u"true";
        } else if (reader.isEndElement() && isBookmark && !isHidden) {
            addPlace(places, uri, title);
        }
    }
    return places;
}

bool isUsersVolume(const std::filesystem::path &folder)
{
    constexpr std::array<const char *, 3> parents{"/media/", "/run/media/", "/mnt/"};
    const std::string path = folder.native() + '/';
    return path == "/mnt/" || std::any_of(parents.begin(), parents.end(), [&path](const std::string &parent) {
               return path.starts_with(parent) && path.size() > parent.size();
           });
}

std::vector<Place> usersPlaces()
{
    const QString config = QStandardPaths::writableLocation(QStandardPaths::ConfigLocation);
    const QString data = QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation);
    std::vector<Place> places;
    const auto take = [&places](const std::vector<Place> &some) {
        for (const Place &place : some) {
            std::error_code error;
            const bool isKnown = std::any_of(places.begin(), places.end(), [&place](const Place &other) {
                return other.folder == place.folder;
            });
            if (!isKnown && std::filesystem::is_directory(place.folder, error)) {
                places.push_back(place);
            }
        }
    };
    take(ownFolders());
    take(gtkBookmarks(contentOf(config + QStringLiteral("/gtk-3.0/bookmarks"))));
    take(kdePlaces(contentOf(data + QStringLiteral("/user-places.xbel"))));
    take(mountedVolumes());
    take({{words(QT_TRANSLATE_NOOP("Words", "Computer")), "/"}});
    return places;
}

} // namespace tallyfold
