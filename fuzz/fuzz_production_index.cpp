// Any bytes as the index and as the list of hashes of a finished production, which may come from anybody:
// what is understood leads nowhere but into its folder, and says what it says.

#include "core/check/HashLines.h"
#include "core/check/IndexContents.h"
#include "core/check/NumberSeries.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>

using namespace tallyfold::check;

namespace {

void require(bool isSo)
{
    if (!isSo) {
        std::abort();
    }
}

void readIndex(QByteArrayView bytes)
{
    std::vector<NumberRange> ranges;
    for (const IndexedCopy &copy : IndexContents::of(bytes).copies) {
        require(!copy.name.contains(u'/') && copy.name != u".." && copy.name != u".");
        require(copy.numbers.count >= 1 && copy.numbers.firstPage + copy.numbers.count - 1 == copy.pages);
        require(copy.numbers.text(0) == copy.first);
        require(copy.numbers.text(copy.numbers.count - 1) == copy.last);
        ranges.push_back({copy.first, copy.last, copy.numbers.count});
    }
    const NumberSeries series = NumberSeries::of(ranges);
    require(series.runs.empty() == ranges.empty());
    for (const NumberSeries::Gap &gap : series.gaps) {
        require(gap.before < ranges.size());
    }
    for (const NumberSeries::Overlap &overlap : series.overlaps) {
        require(overlap.range < ranges.size() && overlap.other < ranges.size());
        require(overlap.range != overlap.other);
    }
}

void readHashes(QByteArrayView bytes)
{
    const HashLines lines = HashLines::of(bytes);
    QByteArray written;
    for (const auto &[name, digest] : lines.digests) {
        written += hashLine(digest, name);
    }
    const HashLines again = HashLines::of(written);
    require(again.digests == lines.digests && again.linesNotUnderstood.empty());
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const QByteArrayView bytes(reinterpret_cast<const char *>(data), static_cast<qsizetype>(size));
    readIndex(bytes);
    readHashes(bytes);
    return 0;
}
