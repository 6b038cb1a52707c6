#include "pdf/copy/OptionalContent.h"

#include "pdf/syntax/NumberFormat.h"
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
            appendInteger(list, *number);
            list.append(" 0 R");
        }
    }
    if (!list.empty()) {
        list.push_back(']');
    }
    return list;
}

void appendGroups(std::string &out, std::string_view key, const std::string &groups)
{
    if (!groups.empty()) {
        out.append(key).append(groups);
    }
}

void appendNames(std::string &out, std::string_view key, QPDFObjectHandle names)
{
    if (names.isName()) {
        out.append(key);
        appendName(out, names.getName());
    } else if (names.isArray()) {
        out.append(key).push_back('[');
        for (int index = 0, count = names.getArrayNItems(); index < count; ++index) {
            QPDFObjectHandle name = names.getArrayItem(index);
            if (name.isName()) {
                appendName(out, name.getName());
            }
        }
        out.push_back(']');
    }
}

/// Layers that a viewer switches by itself, for instance off on the screen and on in print.
void appendAutomaticStates(std::string &out, QPDFObjectHandle states, const ObjectCopier &copier)
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
        usages.append("<<");
        appendNames(usages, "/Event", usage.getKey("/Event"));
        appendNames(usages, "/Category", usage.getKey("/Category"));
        appendGroups(usages, "/OCGs", groups);
        usages.append(">>");
    }
    if (!usages.empty()) {
        out.append("/AS[").append(usages).push_back(']');
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
    std::string out = "<<";
    appendGroups(out, "/OCGs", groups);
    out.append("/D<<");
    QPDFObjectHandle configuration = properties.getKey("/D");
    if (configuration.isDictionary()) {
        appendNames(out, "/BaseState", configuration.getKey("/BaseState"));
        appendNames(out, "/Intent", configuration.getKey("/Intent"));
        appendGroups(out, "/ON", copiedGroups(configuration.getKey("/ON"), copier));
        appendGroups(out, "/OFF", copiedGroups(configuration.getKey("/OFF"), copier));
        appendAutomaticStates(out, configuration.getKey("/AS"), copier);
    }
    out.append(">>>>");
    return out;
}

} // namespace tallyfold::pdf
