#include "support/testmain.h"
#include "update/comando.h"

#include <QTest>

using namespace Qt::StringLiterals;
using Tipo = ComandoAtualizacao::Tipo;

Q_DECLARE_METATYPE(ComandoAtualizacao::Tipo)

class TestComando : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void Lines_data() {
        QTest::addColumn<QStringList>("before");
        QTest::addColumn<QString>("line");
        QTest::addColumn<Tipo>("kind");
        QTest::addColumn<QString>("text");

        const QStringList none;
        QTest::newRow("empty") << none << u""_s << Tipo::Nada << u""_s;
        QTest::newRow("blanks") << QStringList{u"B:x"_s} << u"  \t"_s << Tipo::Nada << u""_s;
        QTest::newRow("statement") << none << u"E: DELETE"_s << Tipo::Sql << u" DELETE"_s;
        QTest::newRow("statement without text") << none << u"E:"_s << Tipo::Nada << u""_s;
        QTest::newRow("program") << none << u"S:\"a b\" c"_s << Tipo::Programa << u"\"a b\" c"_s;
        QTest::newRow("restart") << none << u"R:agora"_s << Tipo::Reinicio << u""_s;
        QTest::newRow("data without template") << none << u"1<<;>>2"_s << Tipo::Nada << u""_s;
        QTest::newRow("data after an empty template")
            << QStringList{u"B:a 1?"_s, u"B:"_s} << u"1"_s << Tipo::Nada << u""_s;
        QTest::newRow("template alone") << none << u"B:a 1?"_s << Tipo::Nada << u""_s;
        QTest::newRow("the last template") << QStringList{u"B:a 1?"_s, u"B:b 1?"_s} << u"x"_s
                                           << Tipo::Sql << u"b x"_s;
        QTest::newRow("values") << QStringList{u"B:(1?,'2?',3?)"_s} << u"7<<;>>relé<<;>>Null"_s
                                << Tipo::Sql << u"(7,'relé',Null)"_s;
        QTest::newRow("empty values") << QStringList{u"B:(1?,'2?')"_s} << u"<<;>>"_s << Tipo::Sql
                                      << u"(,'')"_s;
        QTest::newRow("lower case is data") << QStringList{u"B:[1?]"_s} << u"e:DELETE"_s
                                            << Tipo::Sql << u"[e:DELETE]"_s;
        QTest::newRow("blank in front is data") << QStringList{u"B:[1?]"_s} << u" E:DELETE"_s
                                                << Tipo::Sql << u"[ E:DELETE]"_s;
        QTest::newRow("eleven values") << QStringList{u"B:11? 1? 10?"_s}
                                       << QString(u"a"_s + u"<<;>>b"_s.repeated(9) + u"<<;>>k"_s)
                                       << Tipo::Sql << u"k a b"_s;
        QTest::newRow("twelfth place, two values")
            << QStringList{u"B:12? 2? 1?"_s} << u"a<<;>>b"_s << Tipo::Sql << u"1b 2? a"_s;
        QTest::newRow("place twice") << QStringList{u"B:1? 1?"_s} << u"a"_s << Tipo::Sql
                                     << u"a 1?"_s;
        QTest::newRow("value with a place") << QStringList{u"B:3? 2? 1?"_s}
                                            << u"a<<;>>b<<;>>[2?]"_s << Tipo::Sql
                                            << u"[b] 2? a"_s;
        QTest::newRow("too few values") << QStringList{u"B:1? 2?"_s} << u"a"_s << Tipo::Sql
                                        << u"a 2?"_s;
        QTest::newRow("too many values") << QStringList{u"B:1?"_s} << u"a<<;>>b<<;>>c"_s
                                         << Tipo::Sql << u"a"_s;
        QTest::newRow("line ends") << QStringList{u"B:a<<vbCrLf>>1?"_s} << u"x<<vbCrLf>>y"_s
                                   << Tipo::Sql << u"a\r\nx\r\ny"_s;
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
