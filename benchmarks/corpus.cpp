#include "corpus.h"

#include <QJsonDocument>
#include <QJsonObject>

#include "form.h"

const std::vector<Statement>& TypicalStatements()
{
    static const std::vector<Statement> statements = {
        {"speed", "speed", 1450.0, 1},
        {"'Line stopped'", "'Line stopped'", "Line stopped", 1},
        {"NOT alarm", "!alarm", true, 2},
        {"speed * 2 > limit AND NOT @TopWidget\\okButton:enabled", "speed * 2 > limit && !okButton.enabled", true, 8},
        {"@Drive:speed.actual - @Drive:speed.target", "drive.speedActual - drive.speedTarget", -1.5, 3},
        {"(HASVALUE order.id) AND order.id != ''", "(order.id !== undefined) && order.id != ''", true, 8},
        {"'Speed: ' + speed + ' of ' + limit + ' rpm'", "'Speed: ' + speed + ' of ' + limit + ' rpm'",
         "Speed: 1450 of 1500 rpm", 9},
        {"(a + b * c - d) / e >= f OR g < h", "(a + b * c - d) / e >= f || g < h", true, 17},
        {"recipe['steps'][0].'name'", "recipe['steps'][0].name", "fill", 9},
        {"samples[index] > samples[0] XOR mode = 'manual'", "(samples[index] > samples[0]) != (mode == 'manual')",
         false, 13},
        {"user.level >= 3 NAND (locked OR maintenance)", "!(user.level >= 3 && (locked || maintenance))", false, 9},
        {"(t1 + t2 + t3 + t4) / 4 - ambient * gain > threshold AND NOT (door = TRUE OR estop = TRUE) "
         "AND phase != 'idle'",
         "(t1 + t2 + t3 + t4) / 4 - ambient * gain > threshold && !(door == true || estop == true) && phase != 'idle'",
         false, 32},
    };
    return statements;
}

Variables TypicalVariables()
{
    const char* const json = R"({
        "speed": 1450, "limit": 1500, "alarm": false, "order.id": "A-4711", "mode": "manual", "phase": "run",
        "recipe": {"steps": [{"name": "fill", "time": 12}, {"name": "mix", "time": 30}], "id": 7},
        "samples": [1.5, 2.5, 0.5], "user.level": 3, "locked": false, "maintenance": true, "gain": 1.25,
        "ambient": 21, "threshold": 40, "door": false, "estop": false, "t1": 29, "t2": 49, "t3": 69, "t4": 89,
        "a": 2, "b": 3, "c": 4, "d": 5, "e": 6, "f": 7, "g": 8, "h": 9})";
    QVariantMap values = QJsonDocument::fromJson(json).object().toVariantMap();
    values.insert("index", 1);
    values.insert("okButton", QVariant::fromValue(TypicalForm()->findChild<QObject*>("okButton")));
    Variables variables = {{"speed.actual", "Drive", "drive.speedActual", 1448.5},
                           {"speed.target", "Drive", "drive.speedTarget", 1450.0}};
    for (auto it = values.constBegin(); it != values.constEnd(); ++it) {
        const bool isWhole = it.value().userType() == QMetaType::LongLong; // All numbers shall be of one type.
        variables.push_back({it.key(), QString(), it.key(), isWhole ? it.value().toDouble() : it.value()});
    }
    return variables;
}

QObject* TypicalForm()
{
    static QObject form;
    static Item* const button = new Item(&form);
    button->setObjectName("okButton");
    return &form;
}

Statement ReadingStatement(int reads)
{
    if (reads == 1)
        return {"v0 * 2 > 100", "v0 * 2 > 100", true, 5, reads};
    if (reads == 3)
        return {"v0 * 2 > v1 AND NOT v2", "v0 * 2 > v1 && !v2", true, 8, reads};
    return {"(v0 + v1 * v2 - v3) / v4 > v5 AND v6 < v7", "(v0 + v1 * v2 - v3) / v4 > v5 && v6 < v7", true, 17, 8};
}

Variables ReadingVariables(int reads)
{
    Variables variables;
    for (const QVariant& value : QVariantList{1450.0, 1500.0, 3.0, 7.0, 2.0, 1.5, 4.0, 9.0}) {
        const QString name = "v" + QString::number(variables.size());
        variables.push_back({name, QString(), name, value});
    }
    if (reads == 3)
        variables[2].value = false;
    return variables;
}

QVariantMap ScriptGlobals(const Variables& variables)
{
    QVariantMap globals;
    for (const Variable& variable : variables) {
        const QString object = variable.script.section('.', 0, 0);
        const QString member = variable.script.section('.', 1);
        QVariantMap members = globals.value(object).toMap();
        members.insert(member, variable.value);
        globals.insert(object, member.isEmpty() ? variable.value : members);
    }
    return globals;
}
