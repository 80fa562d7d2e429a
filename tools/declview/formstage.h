#ifndef FORMSTAGE_H
#define FORMSTAGE_H

#include <QPointer>
#include <QWidget>

class QLabel;

/// Shows a form in the middle, in the size that its author gave it, under its window title.
class FormStage : public QWidget
{
    Q_OBJECT

public:
    FormStage();

    /// The form becomes a child and is shown. The one before is taken off the stage and stays the
    /// caller's.
    void SetForm(QWidget* form);

protected:
    void resizeEvent(QResizeEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void Place();
    void ShowTitle();
    void Lose(const QString& reason);
    QSize FormSize() const;

    QPointer<QWidget> m_form;
    QLabel* const m_title;
    QSize m_designedSize;
};

#endif
