#include "corpus.h"

#include "item.h"

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
        {"(t1 + t2 + t3 + t4) / 4 - ambient * gain > threshold AND NOT (door = TRUE OR estop = TRUE) AND phase != "
         "'idle'",
         "(t1 + t2 + t3 + t4) / 4 - ambient * gain > threshold && !(door == true || estop == true) && phase != 'idle'",
         false, 32},
    };
    return statements;
}

const Variables& TypicalVariables()
{
    static const QVariantList steps
        = {QVariantMap{{"name", "fill"}, {"time", 12.0}}, QVariantMap{{"name", "mix"}, {"time", 30.0}}};
    static const Variables variables = {
        {{"speed", ""}, "speed", 1450.0},
        {{"limit", ""}, "limit", 1500.0},
        {{"alarm", ""}, "alarm", false},
        {{"speed.actual", "Drive"}, "drive.speedActual", 1448.5},
        {{"speed.target", "Drive"}, "drive.speedTarget", 1450.0},
        {{"order.id", ""}, "order.id", "A-4711"},
        {{"recipe", ""}, "recipe", QVariantMap{{"steps", steps}, {"id", 7.0}}},
        {{"samples", ""}, "samples", QVariantList{1.5, 2.5, 0.5}},
        {{"index", ""}, "index", 1},
        {{"mode", ""}, "mode", "manual"},
        {{"user.level", ""}, "user.level", 3.0},
        {{"locked", ""}, "locked", false},
        {{"maintenance", ""}, "maintenance", true},
        {{"ambient", ""}, "ambient", 21.0},
        {{"gain", ""}, "gain", 1.25},
        {{"threshold", ""}, "threshold", 40.0},
        {{"door", ""}, "door", false},
        {{"estop", ""}, "estop", false},
        {{"phase", ""}, "phase", "run"},
        {{"a", ""}, "a", 2.0},
        {{"b", ""}, "b", 3.0},
        {{"c", ""}, "c", 4.0},
        {{"d", ""}, "d", 5.0},
        {{"e", ""}, "e", 6.0},
        {{"f", ""}, "f", 7.0},
        {{"g", ""}, "g", 8.0},
        {{"h", ""}, "h", 9.0},
        {{"t1", ""}, "t1", 29.0},
        {{"t2", ""}, "t2", 49.0},
        {{"t3", ""}, "t3", 69.0},
        {{"t4", ""}, "t4", 89.0},
        {{"okButton", ""}, "okButton", QVariant::fromValue(TypicalForm()->findChild<QObject*>("okButton"))},
    };
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
    switch (reads) {
    case 1:
        return {"v0 * 2 > 100", "v0 * 2 > 100", true, 5, reads};
    case 3:
        return {"v0 * 2 > v1 AND NOT v2", "v0 * 2 > v1 && !v2", true, 8, reads};
    default:
        return {"(v0 + v1 * v2 - v3) / v4 > v5 AND v6 < v7", "(v0 + v1 * v2 - v3) / v4 > v5 && v6 < v7", true, 17,
                reads};
    }
}

Variables ReadingVariables(int reads)
{
    const QVariantList values
        = reads == 3 ? QVariantList{1450.0, 1500.0, false} : QVariantList{1450.0, 1500.0, 3.0, 7.0, 2.0, 1.5, 4.0, 9.0};
    Variables variables;
    for (const QVariant& value : values) {
        const QString name = "v" + QString::number(variables.size());
        variables.push_back({{name, QString()}, name, value});
    }
    return variables;
}

QVariantMap ScriptGlobals(const Variables& variables)
{
    QVariantMap globals;
    for (const Variable& variable : variables) {
        const QStringList path = variable.script.split('.');
        QVariant value = variable.value;
        if (path.size() == 2) {
            QVariantMap members = globals.value(path[0]).toMap();
            members.insert(path[1], value);
            value = members;
        }
        globals.insert(path[0], value);
    }
    return globals;
}
