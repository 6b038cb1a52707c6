#include "core/check/Sha256.h"

#include "core/check/RegularFile.h"
#include "files/FileCalls.h"

#include <QByteArray>

#include <memory>
#include <openssl/evp.h>
#include <vector>

namespace tallyfold::check {

namespace {

constexpr std::size_t blockSize = 256 * 1024;

using Context = std::unique_ptr<EVP_MD_CTX, decltype(&EVP_MD_CTX_free)>;

/// libcrypto fails where there is no memory, or where the system's settings forbid the algorithm.
std::error_code cannotHash()
{
    return make_error_code(std::errc::not_enough_memory);
}

} // namespace

std::variant<HashedFile, std::error_code> sha256Of(const std::filesystem::path &path,
                                                   const std::stop_token &givenUp)
{
    std::error_code error;
    const RegularFile file(path, error);
    if (error) {
        return error;
    }
    const Context context(EVP_MD_CTX_new(), EVP_MD_CTX_free);
    if (!context || EVP_DigestInit_ex(context.get(), EVP_sha256(), nullptr) != 1) {
        return cannotHash();
    }
    HashedFile hashed;
    std::vector<char> block(blockSize);
    while (true) {
        if (givenUp.stop_requested()) {
            return make_error_code(std::errc::operation_canceled);
        }
        const std::size_t count =
            files::readUpTo(files::FileCalls::system(), file.descriptor(),
                            static_cast<std::uint64_t>(hashed.size), std::span(block), error);
        if (error) {
            return error;
        }
        if (EVP_DigestUpdate(context.get(), block.data(), count) != 1) {
            return cannotHash();
        }
        hashed.size += static_cast<std::int64_t>(count);
        if (count < blockSize) {
            break;
        }
    }
    unsigned length = 0;
    if (EVP_DigestFinal_ex(context.get(), hashed.digest.data(), &length) != 1 ||
        length != hashed.digest.size()) {
        return cannotHash();
    }
    return hashed;
}

QByteArray hexadecimal(const Sha256 &digest)
{
    return QByteArray(reinterpret_cast<const char *>(digest.data()), static_cast<qsizetype>(digest.size()))
        .toHex();
}

} // namespace tallyfold::check
