#ifndef NEIGHBOURHOODVIEW_H
#define NEIGHBOURHOODVIEW_H

#include <QGraphicsView>

#include "neighbourhood.h"

/// A neighbourhood as a picture: what is read on the left, readers on the right. A declaration in it is chosen by a
/// double click, or with Tab, Shift+Tab and Enter.
class NeighbourhoodView : public QGraphicsView
{
    Q_OBJECT

public:
    NeighbourhoodView();

    void Show(const Neighbourhood& neighbourhood);

Q_SIGNALS:
    void Chosen(int position);

protected:
    bool focusNextPrevChild(bool next) override;
    void keyPressEvent(QKeyEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;

private:
    void AddNodes();
    void AddArrow(const QRectF& from, const QRectF& to);
    void Describe();
    void SetCurrent(int node);
    void Choose(int node);

    Neighbourhood m_shown;
    QVector<QGraphicsRectItem*> m_boxes; ///< One for each node.
    int m_current = -1;
};

#endif
