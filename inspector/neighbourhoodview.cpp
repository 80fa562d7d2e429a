#include "neighbourhoodview.h"

#include <QFontMetricsF>
#include <QGraphicsRectItem>
#include <QGraphicsScene>
#include <QKeyEvent>

#include <cmath>

namespace {

const double ColumnWidth = 230;
const double BoxWidth = 180;
const double RowHeight = 40;
const double BoxHeight = 26;
const double Padding = 6;
const double ArrowLength = 8;
const double ArrowAngle = 0.4; ///< In radians, of each side.

} // namespace

NeighbourhoodView::NeighbourhoodView()
{
    setScene(new QGraphicsScene(this));
    setRenderHint(QPainter::Antialiasing);
    setAccessibleName("Neighbourhood");
}

void NeighbourhoodView::Show(const Neighbourhood& neighbourhood)
{
    scene()->clear();
    m_boxes.clear();
    m_shown = neighbourhood;
    AddNodes();
    for (const QPair<int, int>& arrow : qAsConst(m_shown.arrows))
        AddArrow(m_boxes.at(arrow.first)->rect(), m_boxes.at(arrow.second)->rect());
    scene()->setSceneRect(scene()->itemsBoundingRect());
    SetCurrent(m_boxes.isEmpty() ? -1 : 0);
    Describe();
}

void NeighbourhoodView::AddNodes()
{
    QHash<int, int> rows; // In each column.
    const QFontMetricsF metrics(font());
    for (const Neighbour& node : qAsConst(m_shown.nodes)) {
        const QRectF area(node.step * ColumnWidth, rows[node.step]++ * RowHeight, BoxWidth, BoxHeight);
        QGraphicsRectItem* const box
            = scene()->addRect(area, QPen(palette().color(QPalette::Mid)), palette().brush(QPalette::AlternateBase));
        box->setToolTip(node.label);
        const QString label = metrics.elidedText(node.label, Qt::ElideLeft, BoxWidth - 2 * Padding);
        QGraphicsSimpleTextItem* const text = scene()->addSimpleText(label, font());
        text->setBrush(palette().brush(QPalette::Text));
        text->setParentItem(box);
        text->setPos(area.left() + Padding, area.center().y() - metrics.height() / 2);
        m_boxes.append(box);
    }
}

void NeighbourhoodView::AddArrow(const QRectF& from, const QRectF& to)
{
    const QPen pen(palette().color(QPalette::Text));
    const QPointF start(from.right(), from.center().y());
    const QPointF end(to.left(), to.center().y());
    scene()->addLine(QLineF(start, end), pen);
    const double angle = std::atan2(start.y() - end.y(), start.x() - end.x());
    for (const double side : {angle - ArrowAngle, angle + ArrowAngle})
        scene()->addLine(QLineF(end, end + ArrowLength * QPointF(std::cos(side), std::sin(side))), pen);
}

/// For those who do not see the picture.
void NeighbourhoodView::Describe()
{
    QStringList sentences;
    for (const QPair<int, int>& arrow : qAsConst(m_shown.arrows))
        sentences
            << QString("%1 reads %2").arg(m_shown.nodes.at(arrow.second).label, m_shown.nodes.at(arrow.first).label);
    setAccessibleDescription(sentences.join("; "));
}

void NeighbourhoodView::SetCurrent(int node)
{
    if (m_current >= 0 && m_current < m_boxes.size())
        m_boxes.at(m_current)->setPen(QPen(palette().color(QPalette::Mid)));
    m_current = node;
    if (node < 0)
        return;
    m_boxes.at(node)->setPen(QPen(palette().color(QPalette::Highlight), 2));
    ensureVisible(m_boxes.at(node));
}

void NeighbourhoodView::Choose(int node)
{
    if (node >= 0 && m_shown.nodes.at(node).position >= 0)
        Q_EMIT Chosen(m_shown.nodes.at(node).position);
}

/// Through the nodes, and at their end out of the view.
bool NeighbourhoodView::focusNextPrevChild(bool next)
{
    const int node = m_current + (next ? 1 : -1);
    if (node < 0 || node >= m_boxes.size())
        return QGraphicsView::focusNextPrevChild(next);
    SetCurrent(node);
    return true;
}

void NeighbourhoodView::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter)
        Choose(m_current);
    else
        QGraphicsView::keyPressEvent(event);
}

void NeighbourhoodView::mouseDoubleClickEvent(QMouseEvent* event)
{
    for (int node = 0; node < m_boxes.size(); ++node) {
        if (m_boxes.at(node)->rect().contains(mapToScene(event->pos())))
            return Choose(node);
    }
}
