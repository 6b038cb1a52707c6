#include "core/Stamper.h"

#include "core/OuterSpaces.h"
#include "core/StampDrawing.h"
#include "core/ViewerLabel.h"
#include "files/FileSink.h"
#include "files/MemorySink.h"
#include "pdf/copy/CopyWriter.h"
#include "pdf/viewing/PageReader.h"

#include <algorithm>
#include <cmath>
#include <exception>
#include <limits>
#include <optional>
#include <variant>

namespace tallyfold::Stamper {

namespace {

using Step = pdf::CopyWriter::Step;

/// The cause of a failure to read all pages.
FailureCause causeOf(const pdf::ReadFailure &failure, FailureCause::During during)
{
    if (failure.error) {
        return {during, failure.error};
    }
    return {during,
            failure.isLimitReached ? FailureCause::Finding::limitReached : FailureCause::Finding::damaged};
}

/// A copy in progress: the planned file, its source and the sink.
struct Copying {
    const PlannedFile &file;
    pdf::Document &source;
    files::ByteSink &sink;
    pdf::Size firstPage{}; ///< Display size, once that page has been read.

    [[nodiscard]] StampError unreadable() const
    {
        using enum FailureCause::During;
        return StampError::unreadable(file.source.name,
                                      source.hasChanged()
                                          ? FailureCause{readingSource, FailureCause::Finding::changed}
                                          : causeOf(source.readFailure(), readingSource));
    }

    [[nodiscard]] StampError cannotWrite() const
    {
        const std::error_code error = sink.failure();
        return StampError::cannotWrite(file.outputName,
                                       error ? StampError::Cause({FailureCause::During::writingCopy, error})
                                             : std::nullopt);
    }

    /// The failure of `step`, if it failed.
    [[nodiscard]] std::optional<StampError> failureOf(Step step) const
    {
        switch (step) {
        case Step::done:
        case Step::noMorePages:
            return std::nullopt;
        case Step::sourceUnreadable:
            return unreadable();
        case Step::cannotWrite:
            break;
        }
        return cannotWrite();
    }
};

/// Draws the pages of a file, at most `limit`. Returns why it ended early, if it did.
std::optional<StampError> drawPages(pdf::CopyWriter &copy, Copying &copying,
                                    const NormalizedSettings &settings, std::int64_t limit,
                                    const PageDone &pageDone)
{
    const PlannedFile &file = copying.file;
    StampDrawing drawing(settings, copy);
    const auto total = static_cast<std::int64_t>(file.pages.size());
    for (std::int64_t index = 0; index < std::min(total, limit); ++index) {
        const Step reached = copy.nextPage();
        if (reached == Step::noMorePages) {
            break;
        }
        if (auto failure = copying.failureOf(reached)) {
            return failure;
        }
        if (index == 0) {
            copying.firstPage = copy.pageSize();
        }
        const PlannedPage &page = file.pages[static_cast<std::size_t>(index)];
        const std::vector<Line> stamp = lines(page, settings, index, total);
        const Step ended = copy.endPage(drawing.content(stamp, copy.pageSize()), viewerLabel(page, settings));
        if (auto failure = copying.failureOf(ended)) {
            return failure;
        }
        if (pageDone && !pageDone()) {
            return StampError::cancelled();
        }
    }
    return std::nullopt;
}

/// Writes a copy of at most `limit` pages; returns the display size of the first.
pdf::Size writeCopy(const PlannedFile &file, pdf::Document &source, const StampSettings &settings,
                    files::ByteSink &sink, std::int64_t limit, const PageDone &pageDone)
{
    Copying copying{file, source, sink};
    pdf::CopyWriter copy(source, sink);
    std::optional<StampError> failure = drawPages(copy, copying, settings.normalized(), limit, pageDone);
    const Step finished = copy.finish();
    if (!failure) {
        failure = copying.failureOf(finished);
    }
    // Pages may come from different versions of the file, or lack data that could not be read.
    if (!failure && (source.hasChanged() || source.readFailure())) {
        failure = copying.unreadable();
    }
    if (failure) {
        throw *failure;
    }
    return copying.firstPage;
}

/// A copy in memory.
struct FirstPages {
    std::vector<char> bytes;
    pdf::Size size; ///< Display size of the first page.
};

FirstPages firstPages(const PlannedFile &file, const StampSettings &settings, std::int64_t pages,
                      const PageDone &pageDone)
{
    const std::unique_ptr<pdf::Document> source = open(file.source);
    files::MemorySink sink;
    const pdf::Size size = writeCopy(file, *source, settings, sink, pages, pageDone);
    return {std::move(sink).bytes(), size};
}

} // namespace

std::unique_ptr<pdf::Document> open(const SourceFile &source)
{
    pdf::Document::Opened opened = pdf::Document::open(source.url);
    if (const auto *failure = std::get_if<pdf::OpenFailure>(&opened)) {
        throw failure->kind == pdf::OpenFailure::Kind::locked
            ? StampError::locked(source.name)
            : StampError::unreadable(source.name,
                                     causeOf(failure->cause, FailureCause::During::openingSource));
    }
    auto document = std::get<std::unique_ptr<pdf::Document>>(std::move(opened));
    if (document->isRestricted()) {
        throw StampError::encrypted(source.name);
    }
    return document;
}

pdf::Size displaySize(const pdf::SourcePage &page)
{
    return pdf::geometryOf(page).displaySize();
}

pdf::Size firstPageSize(const SourceFile &source)
{
    const std::unique_ptr<pdf::Document> document = open(source);
    try {
        pdf::PageTree pages(*document);
        if (const auto page = pages.next()) {
            return displaySize(*page);
        }
    } catch (const std::exception &) { // Thrown by the parser.
    }
    throw StampError::unreadable(source.name,
                                 causeOf(document->readFailure(), FailureCause::During::readingSource));
}

std::vector<Line> lines(const PlannedPage &page, const NormalizedSettings &settings, std::int64_t pageIndex,
                        std::int64_t total)
{
    std::vector<Line> lines;
    if (!page.stamped) {
        return lines;
    }
    if (const QString legend = withoutOuterSpaces(settings->legend); !legend.isEmpty()) {
        lines.push_back({legend, settings->legendPosition});
    }
    if (page.number) {
        lines.push_back({BatesFormatter(settings)(*page.number), settings->batesPosition});
    }
    if (settings->pageOfTotal) {
        lines.push_back({pageLabel(settings, pageIndex + 1, total), settings->pageOfTotalPosition});
    }
    return lines;
}

void write(const PlannedFile &file, const StampSettings &settings, const std::filesystem::path &path,
           const PageDone &pageDone)
{
    const std::unique_ptr<pdf::Document> source = open(file.source);
    std::error_code error;
    const std::unique_ptr<files::FileSink> sink = files::FileSink::create(path, error);
    if (!sink) {
        throw StampError::cannotWrite(displayName(path),
                                      FailureCause{FailureCause::During::creatingCopy, error});
    }
    write(file, *source, settings, *sink, pageDone);
}

void write(const PlannedFile &file, pdf::Document &source, const StampSettings &settings,
           files::ByteSink &sink, const PageDone &pageDone)
{
    (void)writeCopy(file, source, settings, sink, std::numeric_limits<std::int64_t>::max(), pageDone);
}

std::vector<char> data(const PlannedFile &file, const StampSettings &settings, std::int64_t pages)
{
    return firstPages(file, settings, pages, {}).bytes;
}

int previewHeight(const pdf::Size &page, std::int64_t width)
{
    constexpr int most = std::numeric_limits<int>::max();
    if (!(page.width > 0) || !(page.height > 0) || width < 1 || width > most) {
        return 0;
    }
    const double height = page.height * (static_cast<double>(width) / page.width);
    return std::isnan(height) ? 0 : static_cast<int>(std::clamp(height, 1.0, double{most}));
}

std::vector<pdf::Bitmap> previewImages(const PlannedFile &file, const StampSettings &settings,
                                       std::int64_t pages, std::int64_t width, const std::stop_token &givenUp)
{
    return preview(file, settings, pages, width, givenUp).images;
}

Preview preview(const PlannedFile &file, const StampSettings &settings, std::int64_t pages,
                std::int64_t width, const std::stop_token &givenUp)
{
    FirstPages copy = firstPages(file, settings, pages, [&givenUp] { return !givenUp.stop_requested(); });
    Preview preview{{}, copy.size};
    const std::unique_ptr<pdf::PageReader> reader = pdf::PageReader::open(std::move(copy.bytes), givenUp);
    if (!reader) {
        return preview;
    }
    for (int index = 0; index < reader->pageCount(); ++index) {
        const std::optional<pdf::Size> size = reader->mediaSize(index);
        const int height = size ? previewHeight(*size, width) : 0;
        if (height == 0) {
            continue;
        }
        const double scale = static_cast<double>(width) / size->width;
        if (auto image = reader->render(index, static_cast<int>(width), height, scale)) {
            preview.images.push_back(std::move(*image));
        }
    }
    return preview;
}

} // namespace tallyfold::Stamper
