#pragma once

#include "pdf/FontFace.h"

#include <QString>

#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

namespace tallyfold::pdf {

/// The installed fonts, looked up by PostScript name or by the characters they have. One for the whole
/// process: the list of fonts is read once, faces stay open. May be used on several threads.
class FontCatalog {
public:
    using Face = std::shared_ptr<const FontFace>;

    [[nodiscard]] static FontCatalog &installed();

    FontCatalog();
    ~FontCatalog();
    FontCatalog(const FontCatalog &) = delete;
    FontCatalog &operator=(const FontCatalog &) = delete;

    /// The face called `postScriptName`; for the customary names (Helvetica, ArialMT and so on) where they
    /// are not installed a font of the same metrics; for any other name the platform's substitute. Null only
    /// when no font that can be embedded is installed at all.
    [[nodiscard]] Face named(const QString &postScriptName);

    /// A face that has all of `characters`, as near as possible in style to `postScriptName`; null when there
    /// is none.
    [[nodiscard]] Face having(const std::u32string &characters, const QString &postScriptName);

private:
    struct Config;
    struct Candidate;

    Face find(const QString &postScriptName);
    Face exactly(const char *postScriptName);
    Face open(const std::string &file, unsigned index);
    const std::vector<Candidate> &candidates(const QString &postScriptName);

    std::mutex m_mutex;
    std::unique_ptr<Config> m_config;
    std::map<QString, Face> m_named;
    std::map<std::pair<std::string, unsigned>, Face> m_faces;
    std::map<QString, std::vector<Candidate>> m_candidates;
    std::map<std::pair<std::u32string, QString>, Face> m_having;
};

} // namespace tallyfold::pdf
