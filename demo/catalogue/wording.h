#pragma once

#include <QList>
#include <QString>
#include <QStringList>
#include <QVarLengthArray>

namespace demo {

// A description with places that vary: "Válvula relé, {saídas:2 saídas|4 saídas} {rosca:M16x1,5}".
// A place may have a name in front of a colon. Its values stand between bars, an empty one
// included; "6..30/0,5" stands for the numbers from 6 to 30 in steps of 0,5.
class Wording {
public:
    struct Axis {
        QString name;
        QStringList values;
    };
    // One index for each axis, in the order of the text.
    using Choices = QVarLengthArray<quint16, 6>;

    explicit Wording(QStringView source);

    const QList<Axis>& Axes() const { return axes_; }
    quint64 Combinations() const;

    QString Text(const Choices& choices) const;

    // The choices of one of the Combinations(), counted round beyond the last.
    Choices ChoicesOf(quint64 combination) const;

private:
    QStringList literals_;  // one more than there are axes
    QList<Axis> axes_;
};

}  // namespace demo
