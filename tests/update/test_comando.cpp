#include "support/cases.h"
#include "update/comando.h"

class TestComando : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void Lines_data() {
        const Table<QStringList, QString, QString> row("before", "line", "command");
        for (Case& one : Cases(QStringLiteral(TARVO_CASES "/lines.data"))) {
            const QString line = one.Take(u'<').first();
            const QString command = one.Take(u'>').first();
            row(one.name, one.lines, line, command);
        }
        row("blanks", {"B:x"}, "  \t", "Nada");
    }
    void Lines() {
        QFETCH(QStringList, before);
        QFETCH(QString, line);
        static const QStringList kinds = List("Nada", "Sql", "Programa", "Reinicio");
        QString base;
        for (const QString& earlier : before) {
            QCOMPARE(LerComandoAtualizacao(base, earlier).tipo, ComandoAtualizacao::Tipo::Nada);
        }
        ComandoAtualizacao read = LerComandoAtualizacao(base, line);
        read.texto.replace("\r\n"_L1, " CRLF "_L1);
        QTEST(kinds.at(int(read.tipo)) + (read.texto.isEmpty() ? read.texto : u' ' + read.texto),
              "command");
    }
};

TARVO_TEST(TestComando);
#include "test_comando.moc"
