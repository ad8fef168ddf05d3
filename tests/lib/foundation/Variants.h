#ifndef TESTS_FOUNDATION_VARIANTS_H
#define TESTS_FOUNDATION_VARIANTS_H

#include "CountedCollection.h"
#include "FunctionPredicate.h"

#include <foundation/ArrayCollection.h>
#include <foundation/FromCollection.h>
#include <foundation/ListCollection.h>
#include <foundation/MapCollection.h>
#include <foundation/OwnedListCollection.h>
#include <foundation/SetCollection.h>
#include <foundation/SubsetCollection.h>

#include <QString>
#include <QStringList>

#include <list>
#include <map>
#include <set>
#include <string>
#include <vector>

/// Holds some texts, which stand in alphabetical order, and shows them through each variant.
class Variants
{
public:
    explicit Variants(const QStringList& texts)
    {
        for (const QString& text : texts) {
            add(text.toStdString());
        }
        setTail(texts);
    }
    Variants(const Variants&) = delete;
    Variants& operator=(const Variants&) = delete;

    static QStringList getNames()
    {
        return {"list", "set", "map", "array", "owned list", "from", "subset", "counted"};
    }

    /// Whether a variant can show so many texts.
    static bool canHold(const QString& name, int count) { return name != "array" || count == 3; }

    Orvex::Collection<std::string> show(const QString& name)
    {
        using namespace Orvex;
        if (name == "list") {
            return ListCollection<std::string>(list);
        }
        if (name == "set") {
            return SetCollection<std::string>(set);
        }
        if (name == "map") {
            return MapCollection<int, std::string>(map);
        }
        if (name == "array") {
            return ArrayCollection<std::string, 3>(array);
        }
        if (name == "owned list") {
            return OwnedListCollection<std::string>(list);
        }
        if (name == "from") {
            return FromCollection<std::string>(ListCollection<std::string>(tail), wanted);
        }
        if (name == "subset") {
            const FunctionPredicate<std::string> wants(
                [](const std::string& text) { return text.front() != '-'; });
            return SubsetCollection<std::string, bool>(ListCollection<std::string>(mixed), wants);
        }
        return CountedCollection<std::string>(vector, counts);
    }

    Counts counts;

private:
    void add(const std::string& text)
    {
        list.push_back(text);
        set.insert(text);
        map.emplace(static_cast<int>(map.size()), text);
        if (vector.size() < 3) {
            array[vector.size()] = text;
        }
        vector.push_back(text);
        mixed.insert(mixed.end(), {"-before", text, "-after"});
    }

    void setTail(const QStringList& texts)
    {
        tail = list;
        tail.insert(tail.begin(), {"-1", "-2"});
        wanted = texts.isEmpty() ? "absent" : texts.first().toStdString();
    }

    std::list<std::string> list;
    std::set<std::string> set;
    std::map<int, std::string> map;
    std::string array[3];
    std::vector<std::string> vector;
    std::list<std::string> mixed;
    std::list<std::string> tail;
    std::string wanted;
};

#endif
