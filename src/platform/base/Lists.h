// Lists as long as a file says. QList checks that it got its memory when it is resized, but not when it is made with a
// size, filled, or copied because it is shared: it would go on without. These throw std::bad_alloc instead.
#pragma once

#include <QList>
#include <algorithm>
#include <new>
#include <span>
#include <utility>

/// Throws where there is not so much memory to be had at once: before calls of libraries that take it without looking.
inline void requireMemory(std::size_t bytes) {
    // A new-expression might be optimised away.
    ::operator delete(::operator new(bytes));
}

/// `count` fresh entries, in just the memory that they take.
template<class T>
QList<T> listOf(qsizetype count) {
    QList<T> list;
    list.reserve(count); // left undone without memory, but resizing then tries once more and looks
    list.resize(count);
    return list;
}

/// `count` entries of `value`.
template<class T>
QList<T> listOf(qsizetype count, const T& value) {
    QList<T> list = listOf<T>(count);
    std::fill(list.begin(), list.end(), value);
    return list;
}

/// A copy of some entries.
template<class T>
QList<T> listOf(std::span<const T> entries) {
    QList<T> list = listOf<T>(std::ssize(entries));
    std::ranges::copy(entries, list.begin());
    return list;
}

/// The entries to write to, a copy of their own when others share the list.
template<class T>
T* ownData(QList<T>& list) {
    if (!list.isEmpty() && !list.isDetached())
        list = listOf(std::span<const T>(std::as_const(list)));
    return list.data();
}
