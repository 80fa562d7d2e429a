#ifndef COMMANDLINE_H
#define COMMANDLINE_H

#include <QCommandLineParser>

#include <map>
#include <memory>

#include "common/checks.h"

class CheckSettings;

/// The options of declcheck's command line, and what they stand for.
class CommandLine
{
public:
    CommandLine();
    ~CommandLine();

    /// False for what cannot be understood, with the reason told.
    bool Read(const QStringList& arguments);

    /// The files in their order; "-" is the standard input.
    QStringList Forms() const;
    QStringList Translations() const;
    /// How the messages call a file.
    QString NameOf(const QString& file) const;
    QString Format() const { return m_parser.value(m_format); }
    bool ListsVariables() const { return m_parser.isSet(m_list); }
    bool WarningsAreErrors() const { return m_parser.isSet(m_werror); }
    bool Fixes() const { return m_parser.isSet(m_fix); }

    /// Those for a file of that name; the command line goes before the project file. Null when they cannot be
    /// read, with the reason told once.
    const CheckOptions* OptionsFor(const QString& name);

private:
    bool Refuse(const QString& reason) const;
    bool IsTranslation(const QString& file) const;
    QStringList DisabledNames() const;
    bool ReadSettings(const QString& project, CheckSettings* settings, QString* error) const;

    QCommandLineParser m_parser;
    const QCommandLineOption m_package;
    const QCommandLineOption m_data;
    const QCommandLineOption m_project;
    const QCommandLineOption m_handler;
    const QCommandLineOption m_list;
    const QCommandLineOption m_format;
    const QCommandLineOption m_disable;
    const QCommandLineOption m_werror;
    const QCommandLineOption m_fix;
    const QCommandLineOption m_stdinName;
    QSet<int> m_disabled;
    std::map<QString, std::unique_ptr<CheckSettings>> m_settings; ///< By project file; null for those not to be read.
};

#endif
