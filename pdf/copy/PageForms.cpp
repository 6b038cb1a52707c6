#include "pdf/copy/PageForms.h"

#include "pdf/source/PageContent.h"
#include "pdf/syntax/DictionaryWriter.h"
#include "pdf/syntax/NumberFormat.h"

#include <functional>

namespace tallyfold::pdf {

namespace {

/// Shorter resource dictionaries stay direct.
constexpr std::size_t shortResources = 40;

} // namespace

PageForms::PageForms(Document &source, ObjectCopier &copier, StreamingOutput &output)
    : m_source(&source), m_copier(&copier), m_output(&output)
{
}

void PageForms::writeResources(EntryWriter &entries, const QPDFObjectHandle &resources)
{
    int number = 0;
    if (resources.isIndirect()) {
        number = m_copier->copyResources(resources);
    } else {
        std::string syntax;
        m_copier->appendResources(syntax, resources);
        if (syntax.size() <= shortResources) {
            entries.syntax("/Resources", syntax);
            return;
        }
        // Many writers repeat the dictionary on every page, and all pages may inherit it.
        int &known = m_resources[syntax];
        if (known == 0) {
            known = m_output->reserve();
            m_output->writeObject(known, syntax);
        }
        number = known;
    }
    entries.reference("/Resources", number);
}

int PageForms::formFor(const SourcePage &page, const PageGeometry &geometry)
{
    std::string entries;
    EntryWriter form(entries);
    form.name("/Type", "/XObject");
    form.name("/Subtype", "/Form");
    form.rect("/BBox", geometry.visibleBox);
    const Matrix matrix = geometry.toUpright();
    if (matrix != Matrix{}) {
        form.matrix("/Matrix", matrix);
    }
    writeResources(form, page.resources);

    const std::vector<QPDFObjectHandle> streams =
        contentStreams(*m_source, QPDFObjectHandle(page.dictionary).getKey("/Contents"));
    std::string identity = entries;
    for (const QPDFObjectHandle &stream : streams) {
        identity.push_back(' ');
        appendInteger(identity, stream.getObjGen().getObj());
    }
    const auto [place, isNew] = m_forms.try_emplace(std::hash<std::string>{}(identity), 0);
    if (!isNew) {
        return place->second;
    }
    place->second = m_output->reserve();
    if (streams.size() == 1) {
        m_copier->appendStreamEntries(entries, streams.front(), ObjectCopier::StreamEntries::encodingOnly);
        m_copier->writeStreamData(place->second, entries, streams.front());
    } else {
        m_output->writeStream(place->second, entries, joinedContent(streams));
    }
    for (const QPDFObjectHandle &stream : streams) {
        m_source->release(stream);
    }
    return place->second;
}

} // namespace tallyfold::pdf
