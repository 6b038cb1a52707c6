#include "pdf/copy/OptionalContent.h"

#include "pdf/syntax/DictionaryWriter.h"
#include "pdf/syntax/Syntax.h"

#include <vector>

namespace tallyfold::pdf {

namespace {

/// The numbers of those members of `groups` that were copied.
std::vector<int> copiedGroups(QPDFObjectHandle groups, const ObjectCopier &copier)
{
    std::vector<int> copied;
    for (int index = 0, count = groups.isArray() ? groups.getArrayNItems() : 0; index < count; ++index) {
        QPDFObjectHandle group = groups.getArrayItem(index);
        if (const auto number = group.isIndirect() ? copier.copiedNumber(group) : std::nullopt) {
            copied.push_back(*number);
        }
    }
    return copied;
}

/// Writes no entry for no groups.
void writeGroups(EntryWriter &entries, std::string_view key, const std::vector<int> &groups)
{
    if (groups.empty()) {
        return;
    }
    ArrayWriter list = entries.array(key);
    for (const int group : groups) {
        list.reference(group);
    }
}

void writeNames(EntryWriter &entries, std::string_view key, QPDFObjectHandle names)
{
    if (names.isName()) {
        std::string name;
        appendName(name, names.getName());
        entries.name(key, name);
    } else if (names.isArray()) {
        ArrayWriter list = entries.array(key);
        for (int index = 0, count = names.getArrayNItems(); index < count; ++index) {
            QPDFObjectHandle name = names.getArrayItem(index);
            if (name.isName()) {
                appendName(list.out(), name.getName());
            }
        }
    }
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
        const std::vector<int> groups = copiedGroups(usage.getKey("/OCGs"), copier);
        if (groups.empty()) {
            continue;
        }
        DictionaryWriter written(usages);
        writeNames(written, "/Event", usage.getKey("/Event"));
        writeNames(written, "/Category", usage.getKey("/Category"));
        writeGroups(written, "/OCGs", groups);
    }
    if (!usages.empty()) {
        entries.array("/AS").out().append(usages);
    }
}

} // namespace

std::string optionalContentProperties(Document &source, const ObjectCopier &copier)
{
    QPDFObjectHandle properties = source.parsed().getRoot().getKey("/OCProperties");
    if (!properties.isDictionary()) {
        return {};
    }
    const std::vector<int> groups = copiedGroups(properties.getKey("/OCGs"), copier);
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
