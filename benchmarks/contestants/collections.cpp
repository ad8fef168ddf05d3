// Walks a list of pointers by a plain loop and through the views of the foundation.
//
// Usage: collections plain|handle|subset|from COUNT WALKS
#include "Arguments.h"
#include "Figures.h"
#include "Stopwatch.h"

#include <foundation/ForEachControler.h>
#include <foundation/FromCollection.h>
#include <foundation/ListCollection.h>
#include <foundation/MemberPredicate.h>
#include <foundation/SubsetCollection.h>

#include <list>
#include <string>
#include <vector>

namespace
{

/// What the lists hold: the engine's are lists of pointers, whose members are asked too.
struct Item {
    bool isWanted() const { return number >= 0; }

    long number;
};

using Items = std::list<Item*>;

long walkPlainly(const Items& items)
{
    long sum = 0;
    for (const Item* const item : items) {
        sum += item->number;
    }
    return sum;
}

long walk(const Orvex::Collection<Item*>& items)
{
    long sum = 0;
    Item* item = nullptr;
    for (Orvex::ForEachControler<Item*> loop(item, items); loop.next();) {
        sum += item->number;
    }
    return sum;
}

Orvex::Collection<Item*> makeView(const std::string& kind, const Items& items)
{
    const Orvex::ListCollection<Item*> all(items);
    if (kind == "subset") {
        return Orvex::SubsetCollection<Item*, bool>(
            all, Orvex::MemberPredicate<Item*, bool>(&Item::isWanted));
    }
    if (kind == "from") {
        return Orvex::FromCollection<Item*>(all, items.front());
    }
    return all;
}

} // namespace

int main(int argc, char** argv)
{
    const Bench::Arguments arguments(argc, argv, 3);
    const std::string kind = arguments.getText(0);
    std::vector<Item> content(static_cast<std::size_t>(arguments.getNumber(1)));
    Items items;
    for (Item& item : content) {
        item.number = static_cast<long>(items.size());
        items.push_back(&item);
    }
    const Orvex::Collection<Item*> view = makeView(kind, items);

    const long walks = arguments.getNumber(2);
    long sum = 0;
    const Bench::Stopwatch watch;
    for (long number = 0; number < walks; ++number) {
        sum += kind == "plain" ? walkPlainly(items) : walk(view);
    }
    Bench::Figures()
        .add("ns", watch.getNanoseconds() /
                       (static_cast<double>(walks) * static_cast<double>(items.size())))
        .add("sum", static_cast<double>(sum))
        .print();
}
