#include "pdf/copy/CopyWriter.h"

#include "pdf/copy/OptionalContent.h"
#include "pdf/source/FailureLog.h"
#include "pdf/syntax/NumberFormat.h"

#include <exception>

namespace tallyfold::pdf {

namespace {

/// Resource names of a page: "/A0" and so on.
std::string numbered(std::string_view prefix, std::size_t number)
{
    std::string name(prefix);
    appendInteger(name, static_cast<std::int64_t>(number));
    return name;
}

void writeHeadOfForm(EntryWriter &entries, const Rect &box)
{
    entries.name("/Type", "/XObject");
    entries.name("/Subtype", "/Form");
    entries.rect("/BBox", box);
}

} // namespace

CopyWriter::CopyWriter(Document &source, files::ByteSink &sink, FontCatalog &catalog)
    : m_source(&source),
      m_output(sink),
      m_copier(source, m_output),
      m_forms(source, m_copier, m_output),
      m_fonts(m_output, catalog),
      m_tree(m_output),
      m_labels(m_output),
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
    } catch (const std::exception &failure) {
        logFailure("reading a page", failure);
        return Step::sourceUnreadable;
    }
}

Size CopyWriter::pageSize() const
{
    return m_geometry.displaySize();
}

CopyWriter::Step CopyWriter::endPage(std::string_view overlay, const PageLabel &label)
{
    try {
        return endPageUnchecked(overlay, label);
    } catch (const std::exception &failure) {
        logFailure("copying a page", failure);
        return Step::sourceUnreadable;
    }
}

CopyWriter::Step CopyWriter::endPageUnchecked(std::string_view overlay, const PageLabel &label)
{
    const int form = m_forms.formFor(m_page, m_geometry);
    m_content.clear();
    m_objects.clear();
    m_properties.clear();
    EntryWriter(m_objects).reference("/P", form);
    ContentStream drawn(m_content);
    drawn.invokeXObject("/P").endLine();
    drawAnnotations(drawn);
    if (!overlay.empty()) {
        const auto state = drawn.saveGraphicsState();
        if (m_geometry.userUnit != 1) {
            drawn.concatenateMatrix({1 / m_geometry.userUnit, 0, 0, 1 / m_geometry.userUnit, 0, 0});
        }
        drawn.append(overlay);
        if (m_overlayForm != 0) {
            EntryWriter(m_objects).reference("/F", m_overlayForm);
        }
    }
    const int content = m_output.reserve();
    m_output.writeStream(content, {}, m_content);

    const int number = m_output.reserve();
    std::string syntax;
    writePage(syntax, m_tree.add(number), content);
    m_output.writeObject(number, syntax);
    m_labels.add(label);
    m_copier.drain();
    m_source->release(m_page.dictionary);
    return m_output.hasFailed() ? Step::cannotWrite : Step::done;
}

void CopyWriter::writePage(std::string &out, int parent, int content)
{
    DictionaryWriter page(out);
    page.name("/Type", "/Page");
    page.reference("/Parent", parent);
    const Size size = m_geometry.uprightSize();
    page.rect("/MediaBox", {0, 0, size.width, size.height});
    page.reference("/Contents", content);
    writeResources(page);
    QPDFObjectHandle group = m_page.dictionary.getKey("/Group");
    if (group.isDictionary()) {
        page.key("/Group");
        m_copier.append(out, group);
    }
    if (m_geometry.userUnit != 1) {
        page.number("/UserUnit", m_geometry.userUnit, 6);
    }
}

void CopyWriter::writeResources(EntryWriter &page)
{
    DictionaryWriter resources = page.dictionary("/Resources");
    resources.dictionary("/XObject").out().append(m_objects);
    if (m_fonts.isUsed()) {
        resources.reference("/Font", m_fonts.resources());
    }
    if (m_overlayState != 0) {
        resources.dictionary("/ExtGState").reference("/G", m_overlayState);
    }
    if (!m_properties.empty()) {
        resources.dictionary("/Properties").out().append(m_properties);
    }
}

void CopyWriter::drawAnnotations(ContentStream &content)
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
            form = writeGenerated(std::get<GeneratedForm>(appearance.form));
        }
        const std::string name = numbered("/A", number);
        EntryWriter(m_objects).reference(name, form);

        const Matrix placement = concatenate(appearance.placement, m_geometry.toUpright());
        const auto drawForm = [&](Separator after) {
            const auto state = content.saveGraphicsState(after);
            content.concatenateMatrix(placement).invokeXObject(name);
        };
        if (QPDFObjectHandle(appearance.optionalContent).isNull()) {
            drawForm(Separator::newLine);
        } else {
            const std::string layer = numbered("/O", number);
            EntryWriter(m_properties).key(layer);
            m_copier.append(m_properties, appearance.optionalContent);
            const auto sequence = content.beginMarkedContent("/OC", layer);
            drawForm(Separator::space);
        }
        ++number;
    };
    drawVisibleAnnotations(m_page.dictionary, m_acroForm, m_geometry.rotation, m_fonts, draw);
}

int CopyWriter::writeGenerated(const GeneratedForm &form)
{
    std::string syntax;
    EntryWriter entries(syntax);
    writeHeadOfForm(entries, form.boundingBox);
    entries.matrix("/Matrix", form.matrix);
    {
        DictionaryWriter resources = entries.dictionary("/Resources");
        m_copier.appendResourceEntries(syntax, form.resources);
        if (form.usesTextFonts) {
            resources.reference("/Font", m_fonts.resources());
        }
    }
    const int number = m_output.reserve();
    m_output.writeStream(number, syntax, form.content);
    return number;
}

std::string_view CopyWriter::overlayState(double alpha)
{
    if (m_overlayState == 0) {
        m_overlayState = m_output.reserve();
        std::string syntax;
        {
            DictionaryWriter state(syntax);
            state.name("/Type", "/ExtGState");
            state.number("/ca", alpha);
        }
        m_output.writeObject(m_overlayState, syntax);
    }
    return "/G";
}

std::string_view CopyWriter::overlayForm(const Rect &box, std::string_view content)
{
    if (m_overlayForm == 0) {
        m_overlayForm = m_output.reserve();
        std::string syntax;
        EntryWriter entries(syntax);
        writeHeadOfForm(entries, box);
        entries.dictionary("/Resources").reference("/Font", m_fonts.resources());
        m_output.writeStream(m_overlayForm, syntax, content);
    }
    return "/F";
}

CopyWriter::Step CopyWriter::finish()
{
    try {
        std::string syntax;
        {
            DictionaryWriter catalog(syntax);
            catalog.name("/Type", "/Catalog");
            catalog.reference("/Pages", m_tree.finish());
            m_labels.finish(catalog);
            const std::string layers = optionalContentProperties(*m_source, m_copier);
            if (!layers.empty()) {
                catalog.syntax("/OCProperties", layers);
            }
        }
        m_fonts.finish();
        const int number = m_output.reserve();
        m_output.writeObject(number, syntax);
        m_output.finish(number);
    } catch (const std::exception &failure) {
        logFailure("finishing a copy", failure);
        return Step::sourceUnreadable;
    }
    return m_output.hasFailed() ? Step::cannotWrite : Step::done;
}

} // namespace tallyfold::pdf
