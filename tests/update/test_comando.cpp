#include "support/test.h"
#include "update/comando.h"

using Tipo = ComandoAtualizacao::Tipo;

Q_DECLARE_METATYPE(ComandoAtualizacao::Tipo)

class TestComando : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void Lines_data() {
        const Table<QStringList, QString, Tipo, QString> row("before", "line", "kind", "text");

        const QStringList none;
        row("empty", none, "", Tipo::Nada, "");
        row("blanks", {"B:x"}, "  \t", Tipo::Nada, "");
        row("statement", none, "E: DELETE", Tipo::Sql, " DELETE");
        row("statement without text", none, "E:", Tipo::Nada, "");
        row("program", none, "S:\"a b\" c", Tipo::Programa, "\"a b\" c");
        row("restart", none, "R:agora", Tipo::Reinicio, "");
        row("data without template", none, "1<<;>>2", Tipo::Nada, "");
        row("data after an empty template", {"B:a 1?", "B:"}, "1", Tipo::Nada, "");
        row("template alone", none, "B:a 1?", Tipo::Nada, "");
        row("the last template", {"B:a 1?", "B:b 1?"}, "x", Tipo::Sql, "b x");
        row("values", {"B:(1?,'2?',3?)"}, "7<<;>>relé<<;>>Null", Tipo::Sql, "(7,'relé',Null)");
        row("empty values", {"B:(1?,'2?')"}, "<<;>>", Tipo::Sql, "(,'')");
        row("lower case is data", {"B:[1?]"}, "e:DELETE", Tipo::Sql, "[e:DELETE]");
        row("blank in front is data", {"B:[1?]"}, " E:DELETE", Tipo::Sql, "[ E:DELETE]");
        row("eleven values", {"B:11? 1? 10?"},
            QString(u"a"_s + u"<<;>>b"_s.repeated(9) + u"<<;>>k"_s), Tipo::Sql, "k a b");
        row("twelfth place, two values", {"B:12? 2? 1?"}, "a<<;>>b", Tipo::Sql, "1b 2? a");
        row("place twice", {"B:1? 1?"}, "a", Tipo::Sql, "a 1?");
        row("value with a place", {"B:3? 2? 1?"}, "a<<;>>b<<;>>[2?]", Tipo::Sql, "[b] 2? a");
        row("too few values", {"B:1? 2?"}, "a", Tipo::Sql, "a 2?");
        row("too many values", {"B:1?"}, "a<<;>>b<<;>>c", Tipo::Sql, "a");
        row("line ends", {"B:a<<vbCrLf>>1?"}, "x<<vbCrLf>>y", Tipo::Sql, "a\r\nx\r\ny");
    }
    void Lines() {
        QFETCH(QStringList, before);
        QFETCH(QString, line);
        QString base;
        for (const QString& earlier : before) {
            QCOMPARE(LerComandoAtualizacao(base, earlier).tipo, Tipo::Nada);
        }
        const ComandoAtualizacao comando = LerComandoAtualizacao(base, line);
        QTEST(comando.tipo, "kind");
        QTEST(comando.texto, "text");
    }
};

TARVO_TEST(TestComando);
#include "test_comando.moc"
