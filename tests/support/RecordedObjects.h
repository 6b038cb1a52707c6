#pragma once

#include "pdf/syntax/OutputObjects.h"

#include <map>
#include <string>
#include <string_view>

namespace tallyfold::tests {

/// Keeps the objects of an output file, for a test to look at.
class RecordedObjects final : public pdf::OutputObjects {
public:
    struct Stream {
        std::string entries;
        std::string data;
    };

    int reserve() override
    {
        return ++m_last;
    }

    void writeObject(int number, std::string_view syntax) override
    {
        objects[number] = syntax;
    }

    void writeStream(int number, std::string_view entries, std::string_view data) override
    {
        streams[number] = {std::string(entries), std::string(data)};
    }

    void writeEncodedStream(int number, std::string_view entries, std::string_view bytes) override
    {
        streams[number] = {std::string(entries), std::string(bytes)};
    }

    std::map<int, std::string> objects;
    std::map<int, Stream> streams;

private:
    int m_last = 0;
};

} // namespace tallyfold::tests
