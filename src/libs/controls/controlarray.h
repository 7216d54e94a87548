#pragma once

#include "ivrerror.h"

#include <QObject>
#include <QPointer>
#include <QWidget>

#include <functional>
#include <map>
#include <type_traits>

// A numbered set of like controls with holes, as a script window keeps its
// modules and arrows: an element is reached by its index, a missing one is a
// catchable failure, and unloading one leaves a hole that the next load may
// fill. The array owns its elements; one that is destroyed by someone else
// (its parent going first) simply becomes a hole.
template<typename T>
class ControlArray
{
public:
    using Factory = std::function<T *(qint16 index)>;

    explicit ControlArray(Factory factory)
        : m_factory(std::move(factory))
    {}
    ControlArray(const ControlArray &) = delete;
    ControlArray &operator=(const ControlArray &) = delete;
    ~ControlArray()
    {
        for (auto &[index, slot] : m_elements) {
            QObject::disconnect(slot.watch);
            delete slot.element;
        }
    }

    T *at(qint16 index) const
    {
        const auto it = m_elements.find(index);
        if (it == m_elements.end())
            throw ivr::IvrError(
                    QStringLiteral("Control array element '%1' doesn't exist").arg(index));
        return it->second.element;
    }
    T *operator[](qint16 index) const { return at(index); }

    bool exists(qint16 index) const { return m_elements.count(index) != 0; }
    int count() const { return int(m_elements.size()); }
    qint16 lbound() const { return m_elements.empty() ? 0 : m_elements.begin()->first; }
    qint16 ubound() const { return m_elements.empty() ? -1 : m_elements.rbegin()->first; }

    // Makes a new, hidden element under that index.
    T *load(qint16 index)
    {
        if (index < 0)
            throw ivr::IvrError(
                    QStringLiteral("Invalid index '%1' for a control array").arg(index));
        if (exists(index))
            throw ivr::IvrError(
                    QStringLiteral("Control array element '%1' is already loaded").arg(index));
        T *element = m_factory(index);
        if (!element)
            throw ivr::IvrError(
                    QStringLiteral("Control array element '%1' could not be made").arg(index));
        if constexpr (std::is_base_of_v<QWidget, T>)
            element->setVisible(false);
        Slot slot{element, {}};
        slot.watch = QObject::connect(
                element, &QObject::destroyed, [this, index] { m_elements.erase(index); });
        m_elements.emplace(index, slot);
        return element;
    }

    // Destroys the element and leaves a hole.
    void unload(qint16 index)
    {
        const auto it = m_elements.find(index);
        if (it == m_elements.end())
            throw ivr::IvrError(
                    QStringLiteral("Control array element '%1' doesn't exist").arg(index));
        Slot slot = it->second;
        m_elements.erase(it);
        QObject::disconnect(slot.watch);
        delete slot.element;
    }

    QList<qint16> indices() const
    {
        QList<qint16> result;
        result.reserve(count());
        for (const auto &entry : m_elements)
            result.append(entry.first);
        return result;
    }

private:
    struct Slot
    {
        T *element;
        QMetaObject::Connection watch;
    };
    using Map = std::map<qint16, Slot>;

public:
    // Walks the loaded elements in index order; yields the elements.
    class const_iterator
    {
    public:
        using difference_type = std::ptrdiff_t;
        using value_type = T *;
        const_iterator() = default;
        explicit const_iterator(typename Map::const_iterator it)
            : m_it(it)
        {}
        T *operator*() const { return m_it->second.element; }
        qint16 index() const { return m_it->first; }
        const_iterator &operator++()
        {
            ++m_it;
            return *this;
        }
        const_iterator operator++(int)
        {
            const_iterator before = *this;
            ++m_it;
            return before;
        }
        bool operator==(const const_iterator &other) const { return m_it == other.m_it; }

    private:
        typename Map::const_iterator m_it;
    };
    const_iterator begin() const { return const_iterator(m_elements.cbegin()); }
    const_iterator end() const { return const_iterator(m_elements.cend()); }

private:
    Factory m_factory;
    Map m_elements;
};
