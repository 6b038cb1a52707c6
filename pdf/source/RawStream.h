#pragma once

#include <qpdf/Pipeline.hh>

#include <functional>
#include <string_view>
#include <utility>

namespace tallyfold::pdf {

/// A pipeline that passes the data of a stream to a function.
class RawStream final : public Pipeline {
public:
    using Take = std::function<void(std::string_view)>;

    explicit RawStream(Take take) : Pipeline("stream data", nullptr), m_take(std::move(take)) {}

    void write(unsigned char const *data, size_t length) override
    {
        m_take({reinterpret_cast<const char *>(data), length});
    }

    void finish() override {}

private:
    Take m_take;
};

} // namespace tallyfold::pdf
