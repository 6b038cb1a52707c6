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

/// Finds fonts by PostScript name or by the characters they cover. Independent of the locale. May be used on
/// several threads.
class FontCatalog {
public:
    using Face = std::shared_ptr<const FontFace>;

    /// The catalogue of the installed fonts, one for the whole process.
    [[nodiscard]] static FontCatalog &installed();

    /// A catalogue of the fonts in `files` only. Files that cannot be read are ignored.
    explicit FontCatalog(std::span<const std::filesystem::path> files);
    ~FontCatalog();
    FontCatalog(const FontCatalog &) = delete;
    FontCatalog &operator=(const FontCatalog &) = delete;

    /// The face `postScriptName`; for customary names (Helvetica, ArialMT and so on) that are not available
    /// a font of the same metrics; for any other name the platform's substitute. Null only when there is no
    /// font that can be embedded.
    [[nodiscard]] Face named(const QString &postScriptName);

    /// A face that covers one of `spellings`, preferably in the style of `postScriptName` and designed for
    /// `language` (RFC 3066); null when there is none.
    [[nodiscard]] Face faceCovering(std::span<const std::u32string> spellings, const QString &postScriptName,
                                    const std::string &language);

    /// A face with a visible .notdef glyph, preferably in the style of `postScriptName`; null when there is
    /// none.
    [[nodiscard]] Face faceWithVisibleNotdef(const QString &postScriptName);

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
    std::map<std::tuple<std::u32string, QString, std::string>, Face> m_covering;
    std::map<QString, Face> m_withVisibleNotdef;
};

} // namespace tallyfold::pdf
