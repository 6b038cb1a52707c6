#pragma once

#include "files/Descriptor.h"
#include "pdf/viewing/ReaderMessages.h"
#include "reader/LentRooms.h"
#include "reader/PopplerReader.h"

#include <chrono>
#include <memory>
#include <string>
#include <string_view>

namespace tallyfold::reader {

/// The reader's side of the talk: answers requests about the file that was opened last. What a request does
/// not say, or says of a page or a file that is not there, has an empty answer.
class Answers {
public:
    /// Ends the process when an answer takes longer than `longestAnswer`, unless that is zero: the program
    /// waits for less, and is gone when this happens.
    explicit Answers(std::chrono::seconds longestAnswer = std::chrono::seconds::zero());
    ~Answers() = default;
    Answers(const Answers &) = delete;
    Answers &operator=(const Answers &) = delete;

    /// Waits on `socket` for the next request, without end, and answers it. False when there is none to be
    /// had any more, or nobody to answer.
    [[nodiscard]] bool next(int socket);

    /// The answer to `message`, with which came the open file `descriptor`, or none where that is -1.
    [[nodiscard]] pdf::ReaderMessages::Writer to(std::string_view message, int descriptor);

private:
    void open(int descriptor);
    void putTexts(pdf::ReaderMessages::Writer &answer, int page, pdf::ReaderMessages::Reader &request);
    [[nodiscard]] bool render(int page, pdf::ReaderMessages::Reader &request, int descriptor);

    std::chrono::seconds m_longestAnswer;
    std::unique_ptr<LocalReader> m_pages;
    files::Descriptor m_file;
    LentRooms m_rooms;
    std::string m_message;
};

} // namespace tallyfold::reader
