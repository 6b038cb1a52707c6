#include "pdf/syntax/OutputNumberTree.h"

#include "tests/support/RecordedObjects.h"

#include <gtest/gtest.h>
#include <qpdf/QPDFObjectHandle.hh>

#include <cstdint>
#include <string>
#include <vector>

namespace tallyfold::pdf {

namespace {

/// A tree of the keys 0, 2, 4… with the key plus 1 as the value of each.
class Tree {
public:
    explicit Tree(std::int64_t entries)
    {
        OutputNumberTree tree(m_objects);
        for (std::int64_t key = 0; key < 2 * entries; key += 2) {
            tree.add(key, std::to_string(key + 1));
        }
        DictionaryWriter root(m_root);
        tree.finish(root);
    }

    [[nodiscard]] const std::string &root() const
    {
        return m_root;
    }

    [[nodiscard]] std::size_t nodes() const
    {
        return m_objects.objects.size();
    }

    /// The keys in the order of the tree, or what is wrong with it. Every node is looked at.
    [[nodiscard]] std::vector<std::int64_t> keys(std::string &fault) const
    {
        std::vector<std::int64_t> keys;
        walk(parsed(m_root), true, keys, fault);
        return keys;
    }

private:
    void walk(QPDFObjectHandle node, bool isRoot, std::vector<std::int64_t> &keys, std::string &fault) const
    {
        const std::size_t before = keys.size();
        const bool isLeaf = node.hasKey("/Nums");
        QPDFObjectHandle items = node.getKey(isLeaf ? "/Nums" : "/Kids");
        const int count = items.getArrayNItems() / (isLeaf ? 2 : 1);
        if (count > 64 || (count == 0 && !isRoot)) {
            fault = "a node of " + std::to_string(count);
        }
        if (node.hasKey("/Kids") == isLeaf || node.hasKey("/Limits") == isRoot) {
            fault = "a node with the wrong keys";
        }
        for (int index = 0; index < count; ++index) {
            if (isLeaf) {
                keys.push_back(items.getArrayItem(2 * index).getIntValue());
                if (items.getArrayItem(2 * index + 1).getIntValue() != keys.back() + 1) {
                    fault = "a value of another key";
                }
            } else {
                const int kid = items.getArrayItem(index).getIntValueAsInt();
                walk(parsed(m_objects.objects.at(kid)), false, keys, fault);
            }
        }
        if (!isRoot) {
            QPDFObjectHandle limits = node.getKey("/Limits");
            if (limits.getArrayItem(0).getIntValue() != keys.at(before) ||
                limits.getArrayItem(1).getIntValue() != keys.back()) {
                fault = "limits of other keys";
            }
        }
    }

    /// With the object number in the place of a reference, which the parser only takes within a file.
    static QPDFObjectHandle parsed(std::string syntax)
    {
        for (std::size_t at = 0; (at = syntax.find(" 0 R", at)) != std::string::npos;) {
            syntax.erase(at, 4);
        }
        return QPDFObjectHandle::parse(syntax);
    }

    tests::RecordedObjects m_objects;
    std::string m_root;
};

} // namespace

TEST(OutputNumberTree, IsOneDictionaryOfFewEntries)
{
    EXPECT_EQ(Tree(0).root(), "<</Nums[]>>");
    EXPECT_EQ(Tree(2).root(), "<</Nums[0 1 2 3]>>");
    EXPECT_EQ(Tree(64).nodes(), 0);
}

TEST(OutputNumberTree, HasNodesWithLimitsBeyondThat)
{
    EXPECT_EQ(Tree(65).root(), "<</Kids[1 0 R 2 0 R]>>");
    EXPECT_EQ(Tree(65).nodes(), 2);
}

TEST(OutputNumberTree, FindsEveryKeyAtItsPlace)
{
    for (const std::int64_t entries : {1, 63, 64, 65, 128, 129, 4095, 4096, 4097, 8192, 8193, 262'145}) {
        std::string fault;
        const std::vector<std::int64_t> keys = Tree(entries).keys(fault);
        EXPECT_EQ(fault, "") << entries;
        ASSERT_EQ(keys.size(), static_cast<std::size_t>(entries));
        for (std::size_t index = 0; index < keys.size(); ++index) {
            ASSERT_EQ(keys[index], static_cast<std::int64_t>(2 * index)) << entries;
        }
    }
}

} // namespace tallyfold::pdf
