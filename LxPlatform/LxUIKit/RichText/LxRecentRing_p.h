#pragma once
// CLxRecentRing: the last N entries of a small cache, searched in place and replaced oldest first.
// For caches that a fill of one style hits every time and that must never grow (GUI thread only).

template <typename T, int N>
class CLxRecentRing {
public:
    // The first entry `match` accepts, or null.
    template <typename Match>
    const T* Find(Match match) const {
        for (const T& item : m_items)
            if (match(item))
                return &item;
        return nullptr;
    }
    // The oldest entry, to be overwritten.
    T& Next() {
        T& slot = m_items[m_i32Next];
        m_i32Next = (m_i32Next + 1) % N;
        return slot;
    }

private:
    T m_items[N];
    int m_i32Next = 0;
};
