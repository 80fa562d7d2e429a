#ifndef RANDOM_H
#define RANDOM_H

#include <QtGlobal>

/// Numbers that look random and are the same everywhere (SplitMix64).
class Random
{
public:
    explicit Random(quint64 seed) : m_state(seed) {}

    quint64 Next()
    {
        m_state += 0x9e3779b97f4a7c15u;
        quint64 mixed = m_state;
        mixed = (mixed ^ (mixed >> 30)) * 0xbf58476d1ce4e5b9u;
        mixed = (mixed ^ (mixed >> 27)) * 0x94d049bb133111ebu;
        return mixed ^ (mixed >> 31);
    }

    /// From 0 to \a count - 1.
    int Below(int count) { return static_cast<int>(Next() % static_cast<quint64>(count)); }
    bool OneIn(int count) { return Below(count) == 0; }

    /// One of the elements of an array.
    template<typename Element, int count>
    const Element& Of(const Element (&elements)[count])
    {
        return elements[Below(count)];
    }

private:
    quint64 m_state;
};

#endif
