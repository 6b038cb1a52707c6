#include "pdf/syntax/StreamingOutput.h"

#include "pdf/syntax/NumberFormat.h"
#include "pdf/syntax/OutputPageTree.h"
#include "tests/support/PdfBuilder.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/Tool.h"

#include <gtest/gtest.h>

namespace tallyfold::pdf {

using tests::runTool;
using tests::TemporaryFolder;

namespace {

/// Keeps everything, or fails after so many bytes.
class TestSink final : public files::ByteSink {
public:
    explicit TestSink(std::size_t room = SIZE_MAX) : m_room(room) {}

    bool write(std::span<const char> data) override
    {
        if (data.size() > m_room - bytes.size()) {
            return false;
        }
        bytes.append(data.data(), data.size());
        return true;
    }

    bool finish() override
    {
        ++finished;
        return true;
    }

    std::string bytes;
    int finished = 0;

private:
    std::size_t m_room;
};

/// A document of `count` empty pages.
void writePages(StreamingOutput &output, int count)
{
    OutputPageTree tree(output);
    for (int page = 0; page < count; ++page) {
        const int number = output.reserve();
        std::string syntax = "<</Type/Page/MediaBox[0 0 10 10]/Parent ";
        appendInteger(syntax, tree.add(number));
        output.writeObject(number, syntax + " 0 R>>");
    }
    const int catalog = output.reserve();
    output.writeObject(catalog, "<</Type/Catalog/Pages " + tests::reference(tree.finish()) + ">>");
    output.finish(catalog);
}

std::string checked(const std::string &bytes)
{
    const TemporaryFolder folder;
    tests::writeFile(folder / "a.pdf", bytes);
    const auto check = runTool({"qpdf", "--check", folder / "a.pdf"});
    EXPECT_EQ(check.exitCode, 0) << check.output << check.errors;
    return runTool({"qpdf", "--show-npages", folder / "a.pdf"}).output;
}

} // namespace

TEST(StreamingOutput, ItsFilesAreSoundWhateverTheNumberOfPages)
{
    for (const int count : {0, 1, 63, 64, 65, 4096, 4097}) {
        TestSink sink;
        StreamingOutput output(sink);
        writePages(output, count);
        EXPECT_FALSE(output.hasFailed());
        EXPECT_EQ(sink.finished, 1);
        EXPECT_EQ(checked(sink.bytes), std::to_string(count) + "\n");
    }
}

TEST(StreamingOutput, NoNodeOfThePageTreeHasManyKids)
{
    TestSink sink;
    StreamingOutput output(sink);
    writePages(output, 5000);
    const TemporaryFolder folder;
    tests::writeFile(folder / "a.pdf", sink.bytes);
    const auto objects = runTool({"qpdf", "--qdf", "--object-streams=disable", folder / "a.pdf", "-"});
    ASSERT_EQ(objects.exitCode, 0);
    std::size_t at = 0;
    int nodes = 0;
    while ((at = objects.output.find("/Kids [", at)) != std::string::npos) {
        const std::string kids = objects.output.substr(at, objects.output.find(']', at) - at);
        EXPECT_LE(std::count(kids.begin(), kids.end(), 'R'), 64);
        ++nodes;
        ++at;
    }
    EXPECT_EQ(nodes, 79 + 2 + 1);
}

TEST(StreamingOutput, TheSameCallsGiveTheSameBytes)
{
    TestSink first;
    TestSink second;
    StreamingOutput one(first);
    StreamingOutput other(second);
    writePages(one, 10);
    writePages(other, 10);
    EXPECT_EQ(first.bytes, second.bytes);
}

TEST(StreamingOutput, StreamsInPiecesAndWholeOnesComeBack)
{
    TestSink sink;
    StreamingOutput output(sink);
    const int pieces = output.reserve();
    output.beginStream(pieces, "/Piece 1");
    output.appendToStream("first ");
    output.appendToStream("second");
    output.endStream();
    const int known = output.reserve();
    output.beginStream(known, "/Known 1", 7);
    EXPECT_EQ(output.copyToStream(0, 0, 7), 0U); // This sink copies nothing by itself.
    output.appendToStream("seven b");
    output.endStream();
    const int whole = output.reserve();
    output.writeStream(whole, "/Whole 1", std::string(1000, 'x'));
    const int kept = output.reserve();
    output.writeObject(kept, "[" + tests::reference(pieces) + " " + tests::reference(known) + " " +
                                 tests::reference(whole) + "]");
    const int catalog = output.reserve();
    output.writeObject(catalog, "<</Type/Catalog/Kept " + tests::reference(kept) +
                                    "/Pages<</Type/Pages/Kids[]/Count 0>>>>");
    output.finish(catalog);
    const TemporaryFolder folder;
    tests::writeFile(folder / "a.pdf", sink.bytes);
    const auto show = [&](int number) {
        return runTool({"qpdf", "--show-object=" + std::to_string(number), "--filtered-stream-data",
                        folder / "a.pdf"})
            .output;
    };
    EXPECT_EQ(show(pieces), "first second");
    EXPECT_EQ(show(known), "seven b");
    EXPECT_EQ(show(whole), std::string(1000, 'x'));
}

TEST(StreamingOutput, AFailedWriteIsToldAndNothingFollowsIt)
{
    TestSink sink(40);
    StreamingOutput output(sink);
    writePages(output, 10);
    EXPECT_TRUE(output.hasFailed());
    EXPECT_EQ(sink.finished, 0);
    EXPECT_LE(sink.bytes.size(), 40U);
}

} // namespace tallyfold::pdf
