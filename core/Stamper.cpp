#include "core/Stamper.h"

#include "core/OuterSpaces.h"
#include "core/StampDrawing.h"
#include "pdf/CopyWriter.h"
#include "pdf/FileSink.h"
#include "pdf/MemorySink.h"
#include "pdf/PageReader.h"

#include <algorithm>
#include <cmath>
#include <exception>
#include <limits>
#include <optional>
#include <variant>

namespace tallyfold::Stamper {

namespace {

using Step = pdf::CopyWriter::Step;

/// The failure that a step came to, if it failed.
std::optional<StampError> failureOf(Step step, const PlannedFile &file)
{
    switch (step) {
    case Step::done:
    case Step::noMorePages:
        return std::nullopt;
    case Step::sourceUnreadable:
        return StampError::unreadable(file.source.name);
    case Step::cannotWrite:
        break;
    }
    return StampError::cannotWrite(file.outputName);
}

/// Draws the pages of `file`, at most `limit`, and gives what ended it early, if anything did.
std::optional<StampError> drawPages(pdf::CopyWriter &copy, const PlannedFile &file,
                                    const StampSettings &settings, std::int64_t limit,
                                    const PageDone &pageDone)
{
    StampDrawing drawing(settings, copy);
    const auto total = static_cast<std::int64_t>(file.pages.size());
    for (std::int64_t index = 0; index < std::min(total, limit); ++index) {
        const Step reached = copy.nextPage();
        if (reached == Step::noMorePages) {
            break;
        }
        if (auto failure = failureOf(reached, file)) {
            return failure;
        }
        const std::vector<Line> stamp =
            lines(file.pages[static_cast<std::size_t>(index)], settings, index, total);
        if (auto failure = failureOf(copy.endPage(drawing.content(stamp, copy.pageSize())), file)) {
            return failure;
        }
        if (pageDone && !pageDone()) {
            return StampError::cancelled();
        }
    }
    return std::nullopt;
}

void writeCopy(const PlannedFile &file, const StampSettings &settings, pdf::ByteSink &sink,
               std::int64_t limit, const PageDone &pageDone)
{
    const std::unique_ptr<pdf::Document> document = open(file.source);
    pdf::CopyWriter copy(*document, sink);
    std::optional<StampError> failure = drawPages(copy, file, settings.normalized(), limit, pageDone);
    const Step finished = copy.finish();
    if (!failure) {
        failure = failureOf(finished, file);
    }
    // Its pages may be of two different states, or lack what could not be read any more.
    if (!failure && (document->hasChanged() || document->wasCutShort())) {
        failure = StampError::unreadable(file.source.name);
    }
    if (failure) {
        throw *failure;
    }
}

} // namespace

std::unique_ptr<pdf::Document> open(const SourceFile &source)
{
    pdf::Document::Opened opened = pdf::Document::open(source.url);
    if (const auto *failure = std::get_if<pdf::OpenFailure>(&opened)) {
        throw *failure == pdf::OpenFailure::locked ? StampError::locked(source.name)
                                                   : StampError::unreadable(source.name);
    }
    auto document = std::get<std::unique_ptr<pdf::Document>>(std::move(opened));
    if (document->isEncrypted() &&
        !(document->allowsPrinting() && document->allowsChanges() && document->allowsCopying())) {
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
    } catch (const std::exception &) { // The parser's.
    }
    throw StampError::unreadable(source.name);
}

std::vector<Line> lines(const PlannedPage &page, const StampSettings &settings, std::int64_t pageIndex,
                        std::int64_t total)
{
    std::vector<Line> lines;
    if (!page.stamped) {
        return lines;
    }
    if (const QString legend = withoutOuterSpaces(settings.legend); !legend.isEmpty()) {
        lines.push_back({legend, settings.legendPosition});
    }
    if (page.number) {
        lines.push_back({settings.bates(*page.number), settings.batesPosition});
    }
    if (settings.pageOfTotal) {
        lines.push_back({settings.pageLabel(pageIndex + 1, total), settings.pageOfTotalPosition});
    }
    return lines;
}

void write(const PlannedFile &file, const StampSettings &settings, const std::filesystem::path &path,
           const PageDone &pageDone)
{
    const std::unique_ptr<pdf::FileSink> sink = pdf::FileSink::create(path);
    if (!sink) {
        throw StampError::cannotWrite(displayName(path));
    }
    write(file, settings, *sink, pageDone);
}

void write(const PlannedFile &file, const StampSettings &settings, pdf::ByteSink &sink,
           const PageDone &pageDone)
{
    writeCopy(file, settings, sink, std::numeric_limits<std::int64_t>::max(), pageDone);
}

std::vector<char> data(const PlannedFile &file, const StampSettings &settings, std::int64_t pages)
{
    pdf::MemorySink sink;
    writeCopy(file, settings, sink, pages, {});
    return std::move(sink).bytes();
}

std::vector<pdf::Bitmap> previewImages(const PlannedFile &file, const StampSettings &settings,
                                       std::int64_t pages, std::int64_t width)
{
    std::vector<pdf::Bitmap> images;
    const std::unique_ptr<pdf::PageReader> reader = pdf::PageReader::open(data(file, settings, pages));
    if (!reader) {
        return images;
    }
    for (int index = 0; index < reader->pageCount(); ++index) {
        const std::optional<pdf::Size> size = reader->mediaSize(index);
        if (!size || !(size->width > 0) || !(size->height > 0)) {
            continue;
        }
        const double scale = static_cast<double>(width) / size->width;
        const double height = std::max(1.0, std::trunc(size->height * scale));
        if (auto image = reader->render(index, static_cast<int>(width), static_cast<int>(height), scale)) {
            images.push_back(std::move(*image));
        }
    }
    return images;
}

} // namespace tallyfold::Stamper
