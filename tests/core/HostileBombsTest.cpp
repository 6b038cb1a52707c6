#include "files/UnderSanitizer.h"
#include "pdf/syntax/Deflater.h"
#include "tests/core/StampOutcome.h"
#include "tests/support/PdfBuilder.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <fstream>
#include <optional>
#include <string>

namespace tallyfold {

using tests::outcomeOf;
using tests::PdfBuilder;
using tests::reference;

namespace {

/// `number` in big-endian order, in the given number of bytes.
std::string bigEndian(std::size_t number, int bytes)
{
    std::string text;
    for (int byte = bytes - 1; byte >= 0; --byte) {
        text.push_back(static_cast<char>(number >> (8 * byte) & 0xffU));
    }
    return text;
}

/// A file that begins with `objects` and ends with a cross-reference stream with the data `rows`.
std::string withCrossReferences(const std::string &objects, std::string_view entries, std::string_view rows)
{
    std::string file = objects;
    const std::size_t place = file.size();
    file.append("9 0 obj\n<</Type/XRef/Root 1 0 R").append(entries).append("/Length ");
    file.append(std::to_string(rows.size())).append(">>stream\n").append(rows);
    return file.append("\nendstream\nendobj\nstartxref\n").append(std::to_string(place)).append("\n%%EOF\n");
}

std::string packed(std::size_t size)
{
    pdf::Deflater deflater;
    return std::string(deflater.compress(std::string(size, '\0')));
}

/// Measures the peak memory of this process since construction.
class PeakOfMemory {
public:
    PeakOfMemory()
    {
        std::ofstream("/proc/self/clear_refs") << '5';
        m_before = megabytesOf("VmRSS:");
    }

    /// The increase since construction.
    [[nodiscard]] long megabytes() const
    {
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
        return 0; // Sanitizers need much more memory.
#else
        return megabytesOf("VmHWM:") - m_before;
#endif
    }

private:
    static long megabytesOf(const std::string &what)
    {
        std::ifstream status("/proc/self/status");
        for (std::string word; status >> word;) {
            long kilobytes = 0;
            if (word == what && status >> kilobytes) {
                return kilobytes / 1024;
            }
        }
        ADD_FAILURE() << what;
        return 0;
    }

    long m_before = 0;
};

/// A document with one page, followed by repetitions of `line`.
std::string followedBy(std::string_view line, int times)
{
    PdfBuilder builder;
    builder.addPage("/MediaBox[0 0 612 792]");
    std::string file = builder.file();
    for (int time = 0; time < times; ++time) {
        file.append(line);
    }
    return file;
}

} // namespace

TEST(HostileBombs, AnObjectStreamThatExpandsWithoutEndIsRefused)
{
    // The catalog is in it, before a long nothing.
    const std::string index = "1 0 ";
    pdf::Deflater deflater;
    const std::string data(deflater.compress(index + "<</Type/Catalog>>" + std::string(300'000'000, ' ')));
    std::string objects = "%PDF-1.7\n";
    const std::size_t place = objects.size();
    objects += "4 0 obj\n<</Type/ObjStm/N 1/First 4/Filter/FlateDecode/Length " +
               std::to_string(data.size()) + ">>stream\n" + data + "\nendstream\nendobj\n";
    const std::string rows = std::string(7, '\0') + '\2' + bigEndian(4, 4) + bigEndian(0, 2) +
                             std::string(14, '\0') + '\1' + bigEndian(place, 4) + bigEndian(0, 2);
    const std::string file = withCrossReferences(objects, "/Size 5/W[1 4 2]", rows);
    const PeakOfMemory peak;
    // Under a sanitizer the limit is higher, so that a document without pages may be opened.
    const std::optional<SourceProblem> problem = outcomeOf(file).problem;
    EXPECT_TRUE(problem == SourceProblem::unreadable ||
                (isUnderSanitizer && problem == SourceProblem::empty));
    EXPECT_LT(peak.megabytes(), 600);
}

TEST(HostileBombs, CrossReferencesThatExpandWithoutEndAreRefused)
{
    constexpr std::size_t rows = 20'000'000; // Each takes many times its three bytes.
    const std::string file =
        withCrossReferences("%PDF-1.7\n1 0 obj\n<</Type/Catalog>>\nendobj\n",
                            "/Size 20000000/W[1 1 1]/Filter/FlateDecode", packed(3 * rows));
    const PeakOfMemory peak;
    EXPECT_EQ(outcomeOf(file).problem, SourceProblem::unreadable);
    EXPECT_LT(peak.megabytes(), 600);
}

TEST(HostileBombs, BlankLinesWithoutEndAreReadOnce)
{
    for (const std::string_view line :
         {std::string_view("\n\0", 2), std::string_view(" \r\n"), std::string_view("\n\t\f ")}) {
        EXPECT_EQ(outcomeOf(followedBy(line, 300'000)).pages, 1);
    }
}

TEST(HostileBombs, WhatIsReadAgainAndAgainIsRefused)
{
    EXPECT_TRUE(outcomeOf(followedBy("%\n", 200'000)).isRefused());
}

TEST(HostileBombs, StreamsWithoutEndAreSearchedForAWhile)
{
    PdfBuilder builder;
    std::string contents;
    for (int stream = 0; stream < 20'000; ++stream) {
        contents += reference(builder.add("<</Length 0>>stream\nq Q ")) + ' ';
    }
    builder.addPage("/MediaBox[0 0 612 792]/Contents[" + contents + "]");
    const tests::StampOutcome outcome = outcomeOf(builder.file());
    EXPECT_TRUE(outcome.isRefused() || outcome.pages == 1);
}

TEST(HostileBombs, LengthsThatNeedEachOtherDoNotUseUpTheStack)
{
    PdfBuilder builder;
    constexpr int count = 20'000;
    std::string contents;
    for (int stream = 1; stream <= count; ++stream) {
        contents +=
            reference(builder.add("<</Length " + reference(stream + 1) + ">>stream\nq Q\nendstream")) + ' ';
    }
    builder.addPage("/MediaBox[0 0 612 792]/Contents[" + contents + "]");
    EXPECT_TRUE(outcomeOf(builder.file()).hasFailed);
}

TEST(HostileBombs, FiltersInLongRowsAreNotFollowed)
{
    PdfBuilder builder;
    std::string filters;
    for (int filter = 0; filter < 2000; ++filter) {
        filters += "/ASCIIHexDecode";
    }
    const int content = builder.addStream("/Filter[" + filters + "]", std::string(100, '3'));
    const int thrice = builder.addStream("/Filter[/FlateDecode/FlateDecode]", packed(1000));
    builder.addPage("/MediaBox[0 0 612 792]/Contents[" + reference(content) + ' ' + reference(thrice) + "]");
    const tests::StampOutcome outcome = outcomeOf(builder.file());
    EXPECT_TRUE(outcome.isRefused() || outcome.pages == 1);
}

} // namespace tallyfold
