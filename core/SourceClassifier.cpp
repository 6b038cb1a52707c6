#include "core/SourceClassifier.h"

#include "core/EarlierNumber.h"
#include "core/SharedWork.h"
#include "files/FileStatus.h"
#include "pdf/source/Document.h"
#include "pdf/viewing/PageReader.h"

#include <variant>

namespace tallyfold {

namespace {

FileDate modificationDate(const std::filesystem::path &location)
{
    const std::optional<files::FileStatus> status = files::FileStatus::of(location);
    return status ? status->modified : distantPast();
}

std::optional<QString> earlierNumberOnFirstPage(const std::filesystem::path &location)
{
    const std::unique_ptr<pdf::PageReader> reader = pdf::PageReader::open(location);
    const std::optional<pdf::Rect> crop = reader ? reader->cropBox(0) : std::nullopt;
    if (!crop) {
        return std::nullopt;
    }
    const auto texts = reader->textIn(0, earlierNumberStrips(*crop));
    for (const QString &text : texts.value_or(std::vector<QString>())) {
        if (auto number = earlierNumberIn(text)) {
            return number;
        }
    }
    return std::nullopt;
}

/// What the file of `source` contains, as far as it can be told, noted there; whether there was memory
/// enough.
bool readContents(SourceFile &source, EarlierNumbers earlierNumbers)
{
    pdf::Document::Opened opened = pdf::Document::open(source.url);
    if (const auto *failure = std::get_if<pdf::OpenFailure>(&opened)) {
        source.problem = failure->kind == pdf::OpenFailure::Kind::locked ? SourceProblem::locked
                                                                         : SourceProblem::unreadable;
        return !failure->cause.isMemoryShort;
    }
    const auto document = std::get<std::unique_ptr<pdf::Document>>(std::move(opened));
    source.pageCount = document->pageCount();
    if (const pdf::ReadFailure failure = document->readFailure()) {
        source.problem = SourceProblem::unreadable;
        source.pageCount = 0;
        return !failure.isMemoryShort;
    }
    if (document->isRestricted()) {
        source.problem = SourceProblem::encrypted;
    } else if (source.pageCount == 0) {
        source.problem = SourceProblem::empty;
    } else if (earlierNumbers == EarlierNumbers::find) {
        source.existingBates = earlierNumberOnFirstPage(source.url);
    }
    return true;
}

} // namespace

SourceFile classify(const std::filesystem::path &location, EarlierNumbers earlierNumbers)
{
    // One file's limit of memory goes by what the whole process has, and what others take must not change
    // what is found.
    static SharedWork reading;
    SourceFile source;
    source.id = QUuid::createUuid();
    source.url = location;
    source.name = displayName(location);
    source.modified = modificationDate(location);
    const SourceFile unread = source;
    reading.run([&] {
        source = unread;
        return readContents(source, earlierNumbers);
    });
    return source;
}

} // namespace tallyfold
