#ifndef READINGORDER_H
#define READINGORDER_H

#include <memory>
#include <vector>

class BoundStatement;

/// The order in which statements are evaluated: each after those whose properties it reads and after what bounds
/// its property; where that makes no circle, after all that writes an object it reads.
class ReadingOrder
{
public:
    typedef std::vector<std::shared_ptr<BoundStatement>> Statements;

    bool IsValid() const { return m_isValid; }
    void Invalidate() { m_isValid = false; }

    /// A new statement of the form, with its references.
    void Append(BoundStatement* statement);

    /// Puts ranks and circles into the statements, which are given in the order bound.
    void Compute(const Statements& statements);

    /// Whether a statement is in a circle.
    bool HasCircles() const { return m_circleCount > 0; }
    /// The members of the circle that the statement is in, as it reads round: itself, what it reads, and so on,
    /// itself once more. Of a long one the beginning.
    static std::vector<const BoundStatement*> WayRound(const BoundStatement& statement);

private:
    bool m_isValid = true;
    int m_lastRank = 0;
    int m_circleCount = 0;
};

#endif
