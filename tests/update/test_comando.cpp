#include "support/cases.h"
#include "update/comando.h"

struct TestComando : Fixture {};

TEST(TestComando, Lines) {
    Each<QStringList, QString, QString> row;
    for (Case& one : Cases(QStringLiteral(TARVO_CASES "/lines.data"))) {
        const QString line = one.Take(u'<').first();
        const QString command = one.Take(u'>').first();
        row(one.name, one.lines, line, command);
    }
    row("blanks", {"B:x"}, "  \t", "Nada");
    for (const auto& [before, line, command] : row) {
        static const QStringList kinds = List("Nada", "Sql", "Programa", "Reinicio");
        QString base;
        for (const QString& earlier : before) {
            QCOMPARE(LerComandoAtualizacao(base, earlier).tipo, ComandoAtualizacao::Tipo::Nada);
        }
        ComandoAtualizacao read = LerComandoAtualizacao(base, line);
        read.texto.replace("\r\n"_L1, " CRLF "_L1);
        QCOMPARE(kinds.at(int(read.tipo)) + (read.texto.isEmpty() ? read.texto : u' ' + read.texto),
                 command);
    }
}
