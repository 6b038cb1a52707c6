#include "pdf/copy/OptionalContent.h"

#include "pdf/syntax/DictionaryWriter.h"
#include "pdf/syntax/Syntax.h"

namespace tallyfold::pdf {

namespace {

/// "[1 0 R 2 0 R]" of those members of `groups` that were copied; empty when none was.
std::string copiedGroups(QPDFObjectHandle groups, const ObjectCopier &copier)
{
    std::string list;
    if (!groups.isArray()) {
        return list;
    }
    for (int index = 0, count = groups.getArrayNItems(); index < count; ++index) {
        QPDFObjectHandle group = groups.getArrayItem(index);
        const auto number = group.isIndirect() ? copier.copiedNumber(group) : std::nullopt;
        if (number) {
            list.push_back(list.empty() ? '[' : ' ');
            appendReference(list, *number);
        }
    }
    if (!list.empty()) {
        list.push_back(']');
    }
    return list;
}

void writeGroups(EntryWriter &entries, std::string_view key, const std::string &groups)
{
    if (!groups.empty()) {
        entries.syntax(key, groups);
    }
}

void writeNames(EntryWriter &entries, std::string_view key, QPDFObjectHandle names)
{
    std::string syntax;
    if (names.isName()) {
        appendName(syntax, names.getName());
    } else if (names.isArray()) {
        syntax.push_back('[');
        for (int index = 0, count = names.getArrayNItems(); index < count; ++index) {
            QPDFObjectHandle name = names.getArrayItem(index);
            if (name.isName()) {
                appendName(syntax, name.getName());
            }
        }
        syntax.push_back(']');
    } else {
        return;
    }
    entries.syntax(key, syntax);
}

/// Automatic states of groups (`/AS`), for instance hidden on the screen and visible in print.
void writeAutomaticStates(EntryWriter &entries, QPDFObjectHandle states, const ObjectCopier &copier)
{
    if (!states.isArray()) {
        return;
    }
    std::string usages;
    for (int index = 0, count = states.getArrayNItems(); index < count; ++index) {
        QPDFObjectHandle usage = states.getArrayItem(index);
        if (!usage.isDictionary()) {
            continue;
        }
        const std::string groups = copiedGroups(usage.getKey("/OCGs"), copier);
        if (groups.empty()) {
            continue;
        }
        DictionaryWriter written(usages);
        writeNames(written, "/Event", usage.getKey("/Event"));
        writeNames(written, "/Category", usage.getKey("/Category"));
        writeGroups(written, "/OCGs", groups);
    }
    if (!usages.empty()) {
        entries.syntax("/AS", "[" + usages + "]");
    }
}

} // namespace

std::string optionalContentProperties(Document &source, const ObjectCopier &copier)
{
    QPDFObjectHandle properties = source.parsed().getRoot().getKey("/OCProperties");
    if (!properties.isDictionary()) {
        return {};
    }
    const std::string groups = copiedGroups(properties.getKey("/OCGs"), copier);
    if (groups.empty()) {
        return {};
    }
    std::string out;
    {
        DictionaryWriter written(out);
        writeGroups(written, "/OCGs", groups);
        DictionaryWriter defaults = written.dictionary("/D");
        QPDFObjectHandle configuration = properties.getKey("/D");
        if (configuration.isDictionary()) {
            writeNames(defaults, "/BaseState", configuration.getKey("/BaseState"));
            writeNames(defaults, "/Intent", configuration.getKey("/Intent"));
            writeGroups(defaults, "/ON", copiedGroups(configuration.getKey("/ON"), copier));
            writeGroups(defaults, "/OFF", copiedGroups(configuration.getKey("/OFF"), copier));
            writeAutomaticStates(defaults, configuration.getKey("/AS"), copier);
        }
    }
    return out;
}

} // namespace tallyfold::pdf
