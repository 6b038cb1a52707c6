#pragma once

#include "pdf/text/FontFace.h"

#include <QString>

#include <filesystem>
#include <map>
#include <memory>
#include <mutex>
#include <span>
#include <string>
#include <tuple>
#include <vector>

namespace tallyfold::pdf {

/// Fonts, looked up by PostScript name or by the characters they have; faces stay open. The locale has no say
/// in what is found. May be used on several threads.
class FontCatalog {
public:
    using Face = std::shared_ptr<const FontFace>;

    /// The installed fonts: one catalogue for the whole process, whose list is read once.
    [[nodiscard]] static FontCatalog &installed();

    /// The fonts of these files and no others. A file that cannot be read has none.
    explicit FontCatalog(std::span<const std::filesystem::path> files);
    ~FontCatalog();
    FontCatalog(const FontCatalog &) = delete;
    FontCatalog &operator=(const FontCatalog &) = delete;

    /// The face called `postScriptName`; for the customary names (Helvetica, ArialMT and so on) where they
    /// are not installed a font of the same metrics; for any other name the platform's substitute. Null only
    /// when no font that can be embedded is installed at all.
    [[nodiscard]] Face named(const QString &postScriptName);

    /// A face that has all characters of one of `spellings`, as near as possible in style to `postScriptName`
    /// and made for `language` (RFC 3066, as fontconfig has them); null when there is none.
    [[nodiscard]] Face having(std::span<const std::u32string> spellings, const QString &postScriptName,
                              const std::string &language);

    /// A face whose glyph for missing characters can be seen, as near as possible in style to
    /// `postScriptName`; null when there is none.
    [[nodiscard]] Face withBox(const QString &postScriptName);

private:
    FontCatalog();

    struct Config;
    struct Candidate;

    Face find(const QString &postScriptName);
    Face exactly(const char *postScriptName);
    Face open(const std::string &file, unsigned index);
    Face nearest(std::span<const std::u32string> spellings, const QString &postScriptName,
                 const std::string &language);
    const std::vector<Candidate> &candidates(const QString &postScriptName, const std::string &language);

    std::mutex m_mutex;
    std::unique_ptr<Config> m_config;
    std::map<QString, Face> m_named;
    std::map<std::pair<std::string, unsigned>, Face> m_faces;
    std::map<std::pair<QString, std::string>, std::vector<Candidate>> m_candidates;
    std::map<std::tuple<std::u32string, QString, std::string>, Face> m_having;
    std::map<QString, Face> m_boxes;
};

} // namespace tallyfold::pdf
