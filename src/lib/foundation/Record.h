#ifndef FOUNDATION_RECORD_H
#define FOUNDATION_RECORD_H

#include <foundation/Collection.h>
#include <foundation/Export.h>

#include <list>
#include <string>

namespace Orvex
{

class Slot;

/// The values of one object as a list of slots under a label, to be shown to a person.
class ORVEX_EXPORT Record
{
public:
    explicit Record(const std::string& recordLabel);
    Record(const Record&) = delete;
    Record& operator=(const Record&) = delete;
    /// Deletes the slots.
    ~Record();

    /// Appends a heading: a slot without a name whose data label is the text.
    void addHeader(const std::string& text);

    const std::string& getLabel() const;
    /// Headings and values in the order in which they came; the record owns them.
    Collection<Slot*> getSlots() const;

    /// Whether whoever shows the record has unfolded it; false at first.
    bool isExpanded() const;
    void setExpanded(bool unfolded);

private:
    friend class Slot;

    void append(Slot* slot);
    void remove(Slot* slot);

    std::string label;
    bool expanded = false;
    std::list<Slot*> slotList;
};

} // namespace Orvex

#endif
