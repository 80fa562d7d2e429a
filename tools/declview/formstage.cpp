#include "declview/formstage.h"

#include <QEvent>
#include <QLabel>
#include <QPainter>
#include <QStackedWidget>
#include <QTabWidget>
#include <QToolBox>

namespace {

const int Margin = 16;
const int FrameWidth = 1;
const int TitlePadding = 6;

/// The new form opens at the pages at which the old one was.
template<typename Container>
void CopyPagesOf(const QWidget* from, const QWidget* to)
{
    const QList<Container*> containers = from->findChildren<Container*>();
    for (const Container* const container : containers) {
        auto* const same = to->findChild<Container*>(container->objectName());
        if (same && !container->objectName().isEmpty())
            same->setCurrentIndex(container->currentIndex());
    }
}

void CopyPages(const QWidget* from, const QWidget* to)
{
    CopyPagesOf<QTabWidget>(from, to);
    CopyPagesOf<QToolBox>(from, to);
    CopyPagesOf<QStackedWidget>(from, to);
}

} // namespace

FormStage::FormStage() : m_title(new QLabel(this))
{
    m_title->setAlignment(Qt::AlignCenter);
    m_title->setMargin(TitlePadding);
    m_title->setAutoFillBackground(true);
    m_title->setBackgroundRole(QPalette::Midlight);
}

void FormStage::SetForm(QWidget* form)
{
    if (m_form) {
        CopyPages(m_form, form);
        m_form->removeEventFilter(this);
        m_form->disconnect(this);
        m_form->hide();
        m_form->setParent(nullptr);
    }
    m_form = form;
    m_designedSize = form->size();
    form->setParent(this, Qt::Widget);
    form->installEventFilter(this);
    connect(form, &QObject::destroyed, this, [this] { Lose("The form has been deleted."); });
    form->show();
    ShowTitle();
    Place();
}

void FormStage::resizeEvent(QResizeEvent*)
{
    Place();
}

void FormStage::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    // As a window of its own it would fill its background itself.
    if (m_form)
        painter.fillRect(m_form->geometry(), m_form->palette().window());
    painter.setPen(QPen(palette().color(QPalette::Mid), FrameWidth));
    const QRect frame = m_form ? m_title->geometry() | m_form->geometry() : m_title->geometry();
    painter.drawRect(frame.adjusted(-FrameWidth, -FrameWidth, 0, 0));
}

bool FormStage::eventFilter(QObject*, QEvent* event)
{
    switch (event->type()) {
    case QEvent::WindowTitleChange:
    case QEvent::ShowToParent:
    case QEvent::HideToParent:
        ShowTitle();
        break;
    case QEvent::ParentChange:
        if (m_form->parentWidget() != this)
            Lose("The form has been moved elsewhere.");
        break;
    case QEvent::LayoutRequest:
        Place();
        break;
    default:
        break;
    }
    return false;
}

void FormStage::Place()
{
    if (!m_form)
        return;
    const QSize form = FormSize();
    const int titleHeight = m_title->sizeHint().height();
    setMinimumSize(form.width() + 2 * Margin, form.height() + titleHeight + 2 * Margin);
    const QPoint corner((width() - form.width()) / 2, (height() - form.height() - titleHeight) / 2);
    m_title->setGeometry(QRect(corner, QSize(form.width(), titleHeight)));
    m_form->setGeometry(QRect(corner + QPoint(0, titleHeight), form));
    update();
}

/// The form has left the stage on its own.
void FormStage::Lose(const QString& reason)
{
    if (m_form) {
        m_form->removeEventFilter(this);
        m_form->disconnect(this);
    }
    m_form = nullptr;
    m_title->setText(reason);
    m_title->setGeometry(QRect(QPoint(0, 0), QSize(width(), m_title->sizeHint().height())));
    update();
}

/// The form's bound title; or that there is nothing to see, as after a button that closes the form.
void FormStage::ShowTitle()
{
    const QString title = m_form->windowTitle().isEmpty() ? m_form->objectName() : m_form->windowTitle();
    m_title->setText(m_form->isHidden() ? title + " (the form is hidden)" : title);
}

QSize FormStage::FormSize() const
{
    return m_designedSize.expandedTo(m_form->minimumSizeHint())
        .expandedTo(m_form->minimumSize())
        .boundedTo(m_form->maximumSize());
}
