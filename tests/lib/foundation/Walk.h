#ifndef TESTS_FOUNDATION_WALK_H
#define TESTS_FOUNDATION_WALK_H

#include <foundation/Collection.h>

#include <QString>
#include <QStringList>

#include <string>

inline QString toText(const std::string& element)
{
    return QString::fromStdString(element);
}

inline QString toText(int element)
{
    return QString::number(element);
}

/// What a locator has still before it, joined by commas. Gives up on a walk without an end.
template <class T>
QString walk(Orvex::Locator<T> locator)
{
    QStringList elements;
    for (; locator.isValid() && elements.size() < 10000; locator.progress()) {
        elements << toText(locator.getCurrent());
    }
    return elements.join(',');
}

template <class T>
QString walk(const Orvex::Collection<T>& collection)
{
    return walk(collection.getLocator());
}

#endif
