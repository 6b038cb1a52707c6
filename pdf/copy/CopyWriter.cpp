#include "pdf/copy/CopyWriter.h"

#include "pdf/copy/OptionalContent.h"
#include "pdf/syntax/NumberFormat.h"
#include "pdf/syntax/Syntax.h"

#include <exception>

namespace tallyfold::pdf {

namespace {

void appendReference(std::string &out, std::string_view key, int number)
{
    out.append(key);
    out.push_back(' ');
    appendInteger(out, number);
    out.append(" 0 R");
}

/// " /A0" and so on: names of what a page draws besides its form.
void appendNumbered(std::string &out, std::string_view prefix, std::size_t number)
{
    out.append(prefix);
    appendInteger(out, static_cast<std::int64_t>(number));
}

} // namespace

CopyWriter::CopyWriter(Document &source, files::ByteSink &sink)
    : m_source(&source),
      m_output(sink),
      m_copier(source, m_output),
      m_forms(source, m_copier, m_output),
      m_fonts(m_output),
      m_tree(m_output),
      m_acroForm(QPDFObjectHandle::newNull())
{
}

TextFonts &CopyWriter::fonts()
{
    return m_fonts;
}

CopyWriter::Step CopyWriter::nextPage()
{
    try {
        if (!m_pages) {
            m_pages.emplace(*m_source);
            m_acroForm = m_source->parsed().getRoot().getKey("/AcroForm");
        }
        std::optional<SourcePage> page = m_pages->next();
        if (!page) {
            return Step::noMorePages;
        }
        m_page = std::move(*page);
        m_geometry = geometryOf(m_page);
        return Step::done;
    } catch (const std::exception &) {
        return Step::sourceUnreadable;
    }
}

Size CopyWriter::pageSize() const
{
    return m_geometry.displaySize();
}

CopyWriter::Step CopyWriter::endPage(std::string_view overlay)
{
    try {
        return endPageUnchecked(overlay);
    } catch (const std::exception &) {
        return Step::sourceUnreadable;
    }
}

CopyWriter::Step CopyWriter::endPageUnchecked(std::string_view overlay)
{
    const int form = m_forms.formFor(m_page, m_geometry);
    m_content.assign("/P Do\n");
    std::string objects;
    std::string properties;
    appendReference(objects, "/P", form);
    appendAnnotations(m_content, objects, properties);
    if (!overlay.empty()) {
        m_content.append("q ");
        if (m_geometry.userUnit != 1) {
            appendMatrix(m_content, {1 / m_geometry.userUnit, 0, 0, 1 / m_geometry.userUnit, 0, 0});
            m_content.append(" cm ");
        }
        m_content.append(overlay).append("Q\n");
        if (m_overlayForm != 0) {
            appendReference(objects, "/F", m_overlayForm);
        }
    }
    const int content = m_output.reserve();
    m_output.writeStream(content, {}, m_content);

    const int number = m_output.reserve();
    std::string page = "<</Type/Page";
    appendReference(page, "/Parent", m_tree.add(number));
    page.append("/MediaBox");
    const Size size = m_geometry.uprightSize();
    appendRect(page, {0, 0, size.width, size.height});
    appendReference(page, "/Contents", content);
    page.append("/Resources<</XObject<<").append(objects).append(">>");
    if (m_fonts.isUsed()) {
        appendReference(page, "/Font", m_fonts.resources());
    }
    if (m_overlayState != 0) {
        appendReference(page, "/ExtGState<</G", m_overlayState);
        page.append(">>");
    }
    if (!properties.empty()) {
        page.append("/Properties<<").append(properties).append(">>");
    }
    page.append(">>");
    QPDFObjectHandle group = m_page.dictionary.getKey("/Group");
    if (group.isDictionary()) {
        page.append("/Group");
        m_copier.append(page, group);
    }
    if (m_geometry.userUnit != 1) {
        page.append("/UserUnit ");
        appendNumber(page, m_geometry.userUnit, 6);
    }
    page.append(">>");
    m_output.writeObject(number, page);
    m_copier.drain();
    m_source->release(m_page.dictionary);
    return m_output.hasFailed() ? Step::cannotWrite : Step::done;
}

void CopyWriter::appendAnnotations(std::string &content, std::string &objects, std::string &properties)
{
    if (!m_page.dictionary.getKey("/Annots").isArray()) {
        return;
    }
    std::size_t number = 0;
    const auto draw = [&](const PlacedAppearance &appearance) {
        int form = 0;
        if (const auto *existing = std::get_if<QPDFObjectHandle>(&appearance.form)) {
            form = m_copier.copyForm(*existing, m_page.resources);
        } else {
            const auto &generated = std::get<GeneratedForm>(appearance.form);
            std::string entries = "/Type/XObject/Subtype/Form/BBox";
            appendRect(entries, generated.boundingBox);
            entries.append("/Matrix[");
            appendMatrix(entries, generated.matrix);
            entries.append("]/Resources");
            appendGeneratedResources(entries, generated);
            form = m_output.reserve();
            m_output.writeStream(form, entries, generated.content);
        }
        appendNumbered(objects, "/A", number);
        appendReference(objects, {}, form);

        const bool isLayered = !QPDFObjectHandle(appearance.optionalContent).isNull();
        if (isLayered) {
            appendNumbered(properties, "/O", number);
            properties.push_back(' ');
            m_copier.append(properties, appearance.optionalContent);
            content.append("/OC ");
            appendNumbered(content, "/O", number);
            content.append(" BDC ");
        }
        content.append("q ");
        appendMatrix(content, concatenate(appearance.placement, m_geometry.toUpright()));
        content.append(" cm ");
        appendNumbered(content, "/A", number);
        content.append(isLayered ? " Do Q EMC\n" : " Do Q\n");
        ++number;
    };
    drawVisibleAnnotations(m_page.dictionary, m_acroForm, m_geometry.rotation, m_fonts, draw);
}

void CopyWriter::appendGeneratedResources(std::string &entries, const GeneratedForm &form)
{
    std::string own;
    m_copier.appendResources(own, form.resources);
    if (form.usesTextFonts) {
        own.resize(own.size() - std::string_view(">>").size());
        appendReference(own, "/Font", m_fonts.resources());
        own.append(">>");
    }
    entries.append(own);
}

std::string_view CopyWriter::overlayState(double alpha)
{
    if (m_overlayState == 0) {
        m_overlayState = m_output.reserve();
        std::string state = "<</Type/ExtGState/ca ";
        appendNumber(state, alpha);
        state.append(">>");
        m_output.writeObject(m_overlayState, state);
    }
    return "/G";
}

std::string_view CopyWriter::overlayForm(const Rect &box, std::string_view content)
{
    if (m_overlayForm == 0) {
        m_overlayForm = m_output.reserve();
        std::string entries = "/Type/XObject/Subtype/Form/BBox";
        appendRect(entries, box);
        entries.append("/Resources<<");
        appendReference(entries, "/Font", m_fonts.resources());
        entries.append(">>");
        m_output.writeStream(m_overlayForm, entries, content);
    }
    return "/F";
}

CopyWriter::Step CopyWriter::finish()
{
    try {
        std::string catalog = "<</Type/Catalog";
        appendReference(catalog, "/Pages", m_tree.finish());
        const std::string layers = optionalContentProperties(*m_source, m_copier);
        if (!layers.empty()) {
            catalog.append("/OCProperties").append(layers);
        }
        catalog.append(">>");
        m_fonts.finish();
        const int number = m_output.reserve();
        m_output.writeObject(number, catalog);
        m_output.finish(number);
    } catch (const std::exception &) {
        return Step::sourceUnreadable;
    }
    return m_output.hasFailed() ? Step::cannotWrite : Step::done;
}

} // namespace tallyfold::pdf
