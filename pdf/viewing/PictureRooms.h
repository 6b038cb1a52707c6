#pragma once

#include "files/Descriptor.h"
#include "files/Mapping.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>

namespace tallyfold::pdf {

/// Memory for a picture that another process is to draw, in this process too. Neither can change its size, so
/// the other one cannot take it away while it is looked at; what is in it may change at any time.
class PictureRoom {
public:
    /// So many bytes; null when there is no memory for them, none are asked for, or more than any picture
    /// has.
    [[nodiscard]] static std::unique_ptr<PictureRoom> ofSize(std::size_t size);

    /// The open file that the other process maps.
    [[nodiscard]] int descriptor() const;
    /// What this process sees of it: at least as many as were asked for.
    [[nodiscard]] std::span<std::uint8_t> bytes() const;

private:
    PictureRoom(files::Descriptor file, files::Mapping memory);

    files::Descriptor m_file;
    files::Mapping m_memory;
};

/// Lends room for the pictures of one process. Getting memory from the system and bringing it into both
/// processes takes as long as copying a picture twice, so what comes back is lent again.
class PictureRooms {
public:
    PictureRooms();

    /// A room of at least so many bytes, with whatever was left in it, until the last one who has it lets go;
    /// null when there is none to be had.
    [[nodiscard]] std::shared_ptr<PictureRoom> lend(std::size_t size);

    /// Lends no room again that was lent before.
    void startAnew();

private:
    class Shelf;
    std::shared_ptr<Shelf> m_shelf;
};

} // namespace tallyfold::pdf
