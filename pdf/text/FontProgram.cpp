#include "pdf/text/FontProgram.h"

#include "pdf/syntax/Deflater.h"
#include "pdf/text/CffCharset.h"
#include "pdf/text/RecentResults.h"

#include <algorithm>
#include <array>
#include <harfbuzz/hb-subset.h>
#include <harfbuzz/hb.h>

namespace tallyfold::pdf {

namespace {

template <auto destroy> struct Destroyer {
    template <typename Handle> void operator()(Handle *handle) const
    {
        destroy(handle);
    }
};

using Input = std::unique_ptr<hb_subset_input_t, Destroyer<hb_subset_input_destroy>>;
using Plan = std::unique_ptr<hb_subset_plan_t, Destroyer<hb_subset_plan_destroy>>;
using Face = std::unique_ptr<hb_face_t, Destroyer<hb_face_destroy>>;
using Blob = std::unique_ptr<hb_blob_t, Destroyer<hb_blob_destroy>>;

/// Tables that an embedded font does not need (PDF 1.7, 9.9, lists those it needs).
constexpr std::array unneededTables{
    HB_TAG('G', 'S', 'U', 'B'), HB_TAG('G', 'P', 'O', 'S'), HB_TAG('G', 'D', 'E', 'F'),
    HB_TAG('k', 'e', 'r', 'n'), HB_TAG('n', 'a', 'm', 'e'), HB_TAG('p', 'o', 's', 't'),
    HB_TAG('O', 'S', '/', '2'), HB_TAG('c', 'm', 'a', 'p'), HB_TAG('f', 'v', 'a', 'r'),
    HB_TAG('g', 'v', 'a', 'r'), HB_TAG('a', 'v', 'a', 'r'), HB_TAG('H', 'V', 'A', 'R'),
    HB_TAG('M', 'V', 'A', 'R'), HB_TAG('S', 'T', 'A', 'T'), HB_TAG('g', 'a', 's', 'p'),
    HB_TAG('D', 'S', 'I', 'G'), HB_TAG('h', 'd', 'm', 'x'), HB_TAG('V', 'D', 'M', 'X'),
    HB_TAG('L', 'T', 'S', 'H'), HB_TAG('v', 'h', 'e', 'a'), HB_TAG('v', 'm', 't', 'x'),
    HB_TAG('V', 'O', 'R', 'G'), HB_TAG('C', 'O', 'L', 'R'), HB_TAG('C', 'P', 'A', 'L'),
    HB_TAG('S', 'V', 'G', ' '), HB_TAG('C', 'B', 'D', 'T'), HB_TAG('C', 'B', 'L', 'C'),
    HB_TAG('B', 'A', 'S', 'E'), HB_TAG('M', 'A', 'T', 'H'), HB_TAG('J', 'S', 'T', 'F'),
    HB_TAG('m', 'e', 't', 'a'), HB_TAG('F', 'F', 'T', 'M')};

std::string bytesOf(hb_blob_t *blob)
{
    unsigned length = 0;
    const char *data = hb_blob_get_data(blob, &length);
    return {data, length};
}

std::shared_ptr<const FontProgram> makeSubset(const FontFace &face, const std::vector<std::uint32_t> &glyphs)
{
    const Input input(hb_subset_input_create_or_fail());
    if (!input) {
        return nullptr;
    }
    hb_set_t *wanted = hb_subset_input_glyph_set(input.get());
    for (const std::uint32_t glyph : glyphs) {
        hb_set_add(wanted, glyph);
    }
    hb_set_t *dropped = hb_subset_input_set(input.get(), HB_SUBSET_SETS_DROP_TABLE_TAG);
    for (const hb_tag_t tag : unneededTables) {
        hb_set_add(dropped, tag);
    }
    unsigned flags = HB_SUBSET_FLAGS_NO_HINTING;
    if (std::find(glyphs.begin(), glyphs.end(), 0U) != glyphs.end()) {
        flags |= HB_SUBSET_FLAGS_NOTDEF_OUTLINE;
    }
    hb_subset_input_set_flags(input.get(), flags);
    const Plan plan(hb_subset_plan_create_or_fail(face.face(), input.get()));
    const Face cut(plan ? hb_subset_plan_execute_or_fail(plan.get()) : nullptr);
    if (!cut) {
        return nullptr;
    }
    auto program = std::make_shared<FontProgram>();
    std::string bytes;
    CffCharset charset;
    if (face.outlines() == FontFace::Outlines::cff) {
        bytes = bytesOf(Blob(hb_face_reference_table(cut.get(), HB_TAG('C', 'F', 'F', ' '))).get());
        charset = CffCharset::of(bytes, hb_face_get_glyph_count(cut.get()));
    } else {
        bytes = bytesOf(Blob(hb_face_reference_blob(cut.get())).get());
    }
    if (bytes.empty()) {
        return nullptr;
    }
    const hb_map_t *newGlyphs = hb_subset_plan_old_to_new_glyph_mapping(plan.get());
    for (const std::uint32_t glyph : glyphs) {
        const hb_codepoint_t mapped = hb_map_get(newGlyphs, glyph);
        program->cids.push_back(mapped == HB_MAP_VALUE_INVALID ? std::uint16_t{0} : charset.cidOf(mapped));
    }
    program->length = bytes.size();
    Deflater deflater;
    program->bytes = deflater.compress(bytes);
    return program;
}

} // namespace

std::shared_ptr<const FontProgram> subset(const std::shared_ptr<const FontFace> &face,
                                          const std::vector<std::uint32_t> &glyphs)
{
    using Key = std::pair<std::shared_ptr<const FontFace>, std::vector<std::uint32_t>>;
    static RecentResults<Key, std::shared_ptr<const FontProgram>> programs;
    return programs.valueFor({face, glyphs}, [&] { return makeSubset(*face, glyphs); });
}

} // namespace tallyfold::pdf
