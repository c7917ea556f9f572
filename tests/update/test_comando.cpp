#include "support/cases.h"
#include "update/comando.h"

struct TestComando : Fixture {};

TEST(TestComando, Lines) {
    Cases row(TARVO_CASES "/lines.data");
    row("blanks", Case{List("B:x", "<   \t", "> Nada")});
    for (auto [one] : row) {
        static const QStringList kinds = List("Nada", "Sql", "Programa", "Reinicio");
        const QString line = one.Take(u'<').first();
        const QString command = one.Take(u'>').first();
        QString base;
        for (const QString& earlier : std::as_const(one.lines)) {
            QCOMPARE(LerComandoAtualizacao(base, earlier).tipo, ComandoAtualizacao::Tipo::Nada);
        }
        ComandoAtualizacao read = LerComandoAtualizacao(base, line);
        read.texto.replace("\r\n"_L1, " CRLF "_L1);
        QCOMPARE(kinds.at(int(read.tipo)) + (read.texto.isEmpty() ? read.texto : u' ' + read.texto),
                 command);
    }
}
