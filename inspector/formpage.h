#ifndef FORMPAGE_H
#define FORMPAGE_H

#include <QPointer>
#include <QWidget>

#include "deliveriesmodel.h"
#include "hostdatamodel.h"
#include "inspectionmodel.h"

class DetailPanel;
class NeighbourhoodView;
class TablePanel;
class TimelineView;

/// All about one form.
class FormPage : public QWidget
{
    Q_OBJECT

public:
    /// The form outlives this.
    explicit FormPage(InspectedForm* form);

    InspectedForm* Inspected() const { return m_form; }
    /// Brings all that is shown up to date.
    void Refresh();
    /// Selects the declarations of the object, or of the nearest around it that has some. False when none has.
    bool SelectObject(const QObject* object);
    /// Selects the declaration at that position.
    void Select(int position);

Q_SIGNALS:
    /// The user has selected a declaration of that object.
    void Selected(QObject* object);
    void Refused(const QString& reason);

private:
    QWidget* MakeDetails();
    QWidget* MakeTimeline();
    void OnSelected();
    void ShowSelected();
    void SelectAgain();

    InspectedForm* const m_form;
    InspectionModel m_model;
    DeliveriesModel m_deliveries;
    HostDataModel m_data;
    TablePanel* m_declarationsPanel;
    TablePanel* m_dataPanel = nullptr;
    DetailPanel* m_detail = nullptr;
    NeighbourhoodView* m_neighbourhood = nullptr;
    TimelineView* m_timeline = nullptr;
    QPointer<QObject> m_object; ///< Of the declaration that is selected.
    QString m_property;
    bool m_isSelectingAgain = false;
};

#endif
