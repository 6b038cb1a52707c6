#include "reader/RequestHandler.h"

#include "files/Descriptor.h"
#include "tests/reader/Child.h"
#include "tests/support/SmallPdf.h"

#include <gtest/gtest.h>

#include <array>
#include <csignal>
#include <fcntl.h>
#include <optional>
#include <sys/mman.h>
#include <sys/socket.h>
#include <unistd.h>
#include <utility>

namespace tallyfold::reader {

using pdf::Rect;
using pdf::ReaderMessages::Reader;
using pdf::ReaderMessages::Request;
using pdf::ReaderMessages::Writer;
using tests::ChildEnd;
using tests::inChild;

namespace {

/// A file in memory of these bytes.
files::Descriptor fileOf(const std::string &bytes)
{
    files::Descriptor file(::memfd_create("file", MFD_CLOEXEC));
    EXPECT_EQ(::write(file.number(), bytes.data(), bytes.size()), static_cast<ssize_t>(bytes.size()));
    return file;
}

template <typename... Parts> std::string request(Request kind, int page, const Parts &...parts)
{
    Writer message;
    message.put(kind);
    message.put(page);
    (message.put(parts), ...);
    return std::string(message.bytes());
}

std::string answer(RequestHandler &handler, const std::string &message, int descriptor = -1)
{
    return std::string(handler.handle(message, descriptor).bytes());
}

/// Opens a file of one page, 100 by 100 points.
void open(RequestHandler &handler)
{
    const files::Descriptor file =
        fileOf(tests::smallPdf({{tests::showText(20, 20, "ABC000001"), "0 0 100 100"}}));
    const std::string bytes = answer(handler, request(Request::open, 0), file.number());
    Reader reader(bytes);
    EXPECT_TRUE(reader.takeFlag());
    EXPECT_EQ(reader.take<int>(), 1);
    EXPECT_TRUE(reader.takeFlag());
    EXPECT_EQ(reader.take<Rect>(), (Rect{0, 0, 100, 100}));
    EXPECT_TRUE(reader.isSound());
}

/// Nothing for a page that cannot be read.
std::optional<QString> textOf(RequestHandler &handler, int page)
{
    const std::string bytes =
        answer(handler, request(Request::text, page, std::uint32_t{1}, Rect{0, 0, 100, 100}));
    Reader reader(bytes);
    if (!reader.takeFlag()) {
        return std::nullopt;
    }
    QString text = reader.takeText();
    EXPECT_TRUE(reader.isSound());
    return text;
}

} // namespace

TEST(RequestHandler, TheFileStaysOpenWhenItsDescriptorIsClosed)
{
    RequestHandler handler;
    open(handler);
    EXPECT_EQ(textOf(handler, 0), QStringLiteral("ABC000001"));
    EXPECT_EQ(textOf(handler, 1), std::nullopt);
}

TEST(RequestHandler, AFileThatIsNoneClosesTheOneBefore)
{
    RequestHandler handler;
    open(handler);
    EXPECT_EQ(answer(handler, request(Request::open, 0)), std::string(6 + sizeof(Rect), '\0'));
    EXPECT_EQ(textOf(handler, 0), std::nullopt);
}

TEST(RequestHandler, WhatIsNoWholeRequestHasAnEmptyAnswer)
{
    RequestHandler handler;
    open(handler);
    const std::string whole = request(Request::cropBox, 0);
    for (std::size_t size = 0; size < whole.size(); ++size) {
        EXPECT_EQ(answer(handler, whole.substr(0, size)), "") << size;
    }
    EXPECT_EQ(answer(handler, request(Request{200}, 0)), "");
    EXPECT_EQ(answer(handler, whole).size(), 1 + sizeof(Rect));
}

TEST(RequestHandler, TheLowestDescriptorIsOneLikeAnyOther)
{
    const auto openAtZero = [] {
        const files::Descriptor file =
            fileOf(tests::smallPdf({{tests::showText(20, 20, "ABC000001"), "0 0 100 100"}}));
        if (::dup2(file.number(), 0) != 0) {
            return 1;
        }
        RequestHandler handler;
        return answer(handler, request(Request::open, 0), 0).front() == '\1' ? 0 : 2;
    };
    EXPECT_EQ(inChild(openAtZero), (ChildEnd{0, 0}));
}

TEST(RequestHandler, WhereNoFileIsHandedNoneOfItsOwnIsClosed)
{
    const auto openNothing = [] {
        if (::dup2(fileOf("x").number(), 0) != 0) {
            return 1;
        }
        for (int round = 0; round < 2; ++round) { // The next one closes what was open.
            RequestHandler handler;
            (void)answer(handler, request(Request::open, 0), -1);
        }
        return ::fcntl(0, F_GETFD) >= 0 ? 0 : 2;
    };
    EXPECT_EQ(inChild(openNothing), (ChildEnd{0, 0}));
}

TEST(RequestHandler, NoMoreAreasAreReadThanThereMayBe)
{
    RequestHandler handler;
    open(handler);
    // The areas are missing.
    EXPECT_EQ(answer(handler, request(Request::text, 0, std::uint32_t{0xffffffff})), std::string(1, '\0'));

    std::array<Rect, 65> areas{};
    const std::string bytes = answer(handler, request(Request::text, 0, std::uint32_t{65}, areas));
    EXPECT_EQ(bytes, '\1' + std::string(64 * 4, '\0')); // So many empty texts.
}

TEST(RequestHandler, APictureThatHasNoRoomIsNotWritten)
{
    RequestHandler handler;
    open(handler);
    const auto draw = [&](int width, int height, int descriptor) {
        return answer(handler, request(Request::render, 0, width, height, 1.0), descriptor);
    };
    const files::Descriptor picture = fileOf(std::string(std::size_t{10} * 10 * 4, '\0'));
    EXPECT_EQ(draw(10, 10, picture.number()), std::string(1, '\1'));
    EXPECT_EQ(draw(100, 100, picture.number()), std::string(1, '\0'));
    EXPECT_EQ(draw(10, 10, -1), std::string(1, '\0'));
    ASSERT_EQ(::ftruncate(picture.number(), 4), 0); // The memory from before is not there any more.
    EXPECT_EQ(draw(10, 10, picture.number()), std::string(1, '\0'));
    ASSERT_EQ(::ftruncate(picture.number(), 400), 0);
    EXPECT_EQ(draw(10, 10, picture.number()), std::string(1, '\1'));
    std::array<unsigned char, 4> pixel{};
    ASSERT_EQ(::pread(picture.number(), pixel.data(), pixel.size(), 0), 4);
    EXPECT_EQ(pixel, (std::array<unsigned char, 4>{255, 255, 255, 255}));
}

TEST(RequestHandler, WithoutAFileOrASizeNothingIsDrawn)
{
    const files::Descriptor picture = fileOf(std::string(400, '\0'));
    const auto draw = [&picture](RequestHandler &handler, int width, int height) {
        return answer(handler, request(Request::render, 0, width, height, 1.0), picture.number());
    };
    RequestHandler closed;
    EXPECT_EQ(draw(closed, 10, 10), std::string(1, '\0'));
    RequestHandler handler;
    open(handler);
    for (const auto &[width, height] : {std::pair{0, 10}, {10, 0}, {-1, -1}, {100'000, 100'000}}) {
        EXPECT_EQ(draw(handler, width, height), std::string(1, '\0')) << width;
    }
    EXPECT_EQ(answer(handler, request(Request::render, 0, 10, 10), picture.number()), std::string(1, '\0'))
        << "no scale";
    EXPECT_EQ(draw(handler, 10, 10), std::string(1, '\1'));
}

TEST(RequestHandler, EachPictureIsWrittenWhereItIsWanted)
{
    RequestHandler handler;
    open(handler);
    const std::string room(std::size_t{10} * 10 * 4, '\0');
    const files::Descriptor first = fileOf(room);
    const files::Descriptor second = fileOf(room);
    for (const int descriptor : {first.number(), first.number(), second.number()}) {
        ASSERT_EQ(::pwrite(descriptor, room.data(), room.size(), 0), static_cast<ssize_t>(room.size()));
        EXPECT_EQ(answer(handler, request(Request::render, 0, 10, 10, 1.0), descriptor),
                  std::string(1, '\1'));
        unsigned char last = 0;
        ASSERT_EQ(::pread(descriptor, &last, 1, 399), 1);
        EXPECT_EQ(last, 255);
    }
}

TEST(RequestHandler, AnAnswerThatTakesTooLongEndsTheProcess)
{
    // The answer cannot be sent: nobody reads, and there is no room for it.
    const auto talk = [](std::chrono::seconds longest) {
        std::array<int, 2> sockets{};
        if (::socketpair(AF_UNIX, SOCK_STREAM, 0, sockets.data()) != 0 ||
            !pdf::ReaderMessages::send(sockets[0], request(Request::cropBox, 0))) {
            return 1;
        }
        std::array<char, 1024> full{};
        while (::send(sockets[1], full.data(), full.size(), MSG_DONTWAIT) > 0) {
        }
        RequestHandler handler(longest);
        return handler.next(sockets[1]) ? 2 : 3;
    };
    EXPECT_EQ(inChild([&] { return talk(std::chrono::seconds(1)); }), (ChildEnd{-1, SIGALRM}));
}

TEST(RequestHandler, TimeThatPassesBetweenQuestionsDoesNotCount)
{
    const auto timer = [] {
        std::array<int, 2> sockets{};
        RequestHandler handler(std::chrono::seconds(10));
        const bool isAnswered = ::socketpair(AF_UNIX, SOCK_STREAM, 0, sockets.data()) == 0 &&
                                pdf::ReaderMessages::send(sockets[0], request(Request::cropBox, 0)) &&
                                handler.next(sockets[1]);
        return isAnswered ? static_cast<int>(::alarm(0)) : 255; // The seconds that are left.
    };
    EXPECT_EQ(inChild(timer), (ChildEnd{0, 0}));
}

} // namespace tallyfold::reader
