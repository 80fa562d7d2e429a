#ifndef FORMCHECKER_H
#define FORMCHECKER_H

#include <QPair>

#include "common/formdocument.h"
#include "common/statementchecks.h"
#include "declcheck/finding.h"
#include "declcheck/forminstance.h"

/// A data variable that a form reads.
struct VariableUse
{
    QString package;
    QString name;
    QString file;
    Position position; ///< Where it is read first.
};

/// Checks the marked properties of one form.
class FormChecker
{
public:
    /// The options must outlive this object.
    FormChecker(const QString& fileName, const CheckOptions& options);

    /// Checks what the file contains. False, with the reason, when the form cannot be checked.
    bool Run(const QByteArray& content, QString* error);

    /// In the order of the file.
    const QVector<Finding>& Findings() const { return m_findings; }
    /// Each variable once, by package and name.
    QVector<VariableUse> Variables() const;
    /// The content with all that is certain mended, and how much that is; null when it is nothing.
    QByteArray Fixed(int* count) const;

private:
    /// A property of an object; the object is null where a path leads nowhere.
    using Target = QPair<QObject*, QString>;

    struct Declaration
    {
        int object; ///< Its number in the form.
        const FormProperty* property;
        QString name; ///< Of the bound property, without the markers.
        Diagnosis diagnosis;
    };

    /// What a declaration reads: another one, and through which reference.
    struct Edge
    {
        int declaration;
        const Reference* reference;
    };

    /// A read of a property that tells nobody of its changes.
    struct QuietRead
    {
        int declaration;
        QString property;
        TextPlace place;
    };

    /// A declaration on the way through the references.
    struct Step
    {
        int declaration;
        int edge; ///< The one that the way goes on with.
    };

    void CollectDeclarations();
    void Collect(int object, const FormProperty& property);
    bool CollectEntry(int object, const FormProperty& property);
    void NoteDeclared(int object, const FormProperty& property, const Target& target);
    void CheckClass(int object);
    void CheckStrays(int object);
    void CheckStatement(int number);
    ValueType TypeOf(const Declaration& declaration, const Reference& reference) const;
    void CheckReferences(int number);
    void CheckValue(const Declaration& declaration, const StatementTypes& types);
    void CheckRange(const Declaration& declaration, const ValueType& type);
    bool IsLimitBound(const Declaration& declaration) const;
    bool CheckObjectAsPackage(const Declaration& declaration, const StatementToken& token);
    void CheckBoundProperty(const Declaration& declaration);
    void CheckReference(int number, const StatementToken& token, bool isRead);
    QObject* Resolve(const Declaration& declaration, const Reference& reference);
    QObject* StartOf(const Declaration& declaration, const QString& element) const;
    void CheckAmbiguity(const Declaration& declaration, QObject* parent, const QString& name, const TextPlace& place);
    void CheckReadProperty(int number, const Reference& reference, QObject* object, bool isRead);
    void CheckStore(const Declaration& declaration);
    void ReportQuietReads();
    void ReadSuppressions(int object);
    bool IsSuppressed(Check check, int object, const QString& property) const;
    void CheckCycles();
    void FindCycles(int start, QVector<int>* depths);
    void ReportCycle(const QVector<Step>& way, int first);

    bool HasProperty(QObject* object, const QString& name) const;
    NearestName PropertiesOf(QObject* object) const;
    void ReportMissingProperty(const Declaration& declaration, QObject* object, const QString& name,
                               const TextPlace* statementPlace);
    QString Describe(QObject* object) const;
    QString Describe(const Declaration& declaration) const;

    void Report(Check check, const QString& message, const Declaration& declaration, const TextPlace& statementPlace,
                const QString& fix = QString());
    void ReportName(Check check, const QString& message, int object, const FormProperty& property);
    void Add(Finding finding, int object);

    const QString m_fileName;
    const CheckOptions& m_options;
    FormDocument m_document;
    FormInstance m_form;
    QVector<Declaration> m_declarations;
    QHash<Target, int> m_writers;                  ///< The first declaration of each property.
    QHash<Target, const FormProperty*> m_declared; ///< All declared properties and entries of constant maps.
    QSet<Target> m_maps;                           ///< Constant maps.
    QSet<Target> m_set;                            ///< Dynamic properties that the form sets.
    QVector<QVector<Edge>> m_edges;                ///< Of each declaration.
    QVector<QuietRead> m_quietReads;
    QHash<QPair<int, QString>, QSet<int>> m_suppressed; ///< Checks, by object and property, or "" for all of them.
    QVector<Finding> m_findings;
    int m_reported = 0; ///< Of the statement that is being checked.
};

#endif
