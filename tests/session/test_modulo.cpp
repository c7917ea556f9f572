#include "platform/erro.h"
#include "platform/system/clock.h"
#include "platform/system/process.h"
#include "session/global.h"
#include "session/modulo.h"
#include "support/testmain.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

#include <set>

using namespace Qt::StringLiterals;

namespace {

constexpr double CincoDeMarco = 40242;  // 5 March 2010

}  // namespace

class TestModulo : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void NormalizarNumero_data() {
        QTest::addColumn<QString>("texto");
        QTest::addColumn<QString>("numero");
        QTest::newRow("zero and hyphen") << u"01-234"_s << u"1234"_s;
        QTest::newRow("digit before letter") << u"1k 24"_s << u"K24"_s;
        QTest::newRow("one digit") << u"7"_s << u"7"_s;
        QTest::newRow("one zero") << u"0"_s << QString();
        QTest::newRow("letter first") << u"A1"_s << u"A1"_s;
        QTest::newRow("two digits") << u"12K"_s << u"12K"_s;
        QTest::newRow("zeros uncover a digit") << u"007K0"_s << u"K0"_s;
        QTest::newRow("only one digit goes") << u"1K2L"_s << u"K2L"_s;
        QTest::newRow("zero after the digit's letter") << u"0A0"_s << u"A0"_s;
        QTest::newRow("accents and signs") << u"çá-é*?#'\t\n🙂"_s << QString();
        QTest::newRow("look-alikes") << u"ßſıK９²"_s << u"K"_s;
    }
    void NormalizarNumero() {
        QFETCH(QString, texto);
        QTEST(::NormalizarNumero(texto), "numero");
    }

    void Datas_data() {
        QTest::addColumn<double>("data");
        QTest::addColumn<QString>("escrita");
        QTest::addColumn<QString>("sql");
        QTest::newRow("day") << CincoDeMarco << u"05-MAR-2010 00:00:00"_s
                             << u"DateSerial(2010,3,5)+TimeSerial(0,0,0)"_s;
        QTest::newRow("one second") << CincoDeMarco + 1.0 / 86400 << u"05-MAR-2010 00:00:01"_s
                                    << u"DateSerial(2010,3,5)+TimeSerial(0,0,1)"_s;
        QTest::newRow("evening") << 45657 + 86399.0 / 86400 << u"31-DEZ-2024 23:59:59"_s
                                 << u"DateSerial(2024,12,31)+TimeSerial(23,59,59)"_s;
        QTest::newRow("none is now")
            << 1.0 << u"31-DEZ-1899 00:00:00"_s << u"DateSerial(2024,2,9)+TimeSerial(7,8,9)"_s;
        QTest::newRow("just past none") << 1.0 + 1.0 / 86400 << u"31-DEZ-1899 00:00:01"_s
                                        << u"DateSerial(1899,12,31)+TimeSerial(0,0,1)"_s;
    }
    void Datas() {
        QFETCH(double, data);
        sys::SetClock([] { return QDateTime(QDate(2024, 2, 9), QTime(7, 8, 9)); });
        QTEST(FormatarDataHora(data), "escrita");
        QTEST(DataHoraSql(data), "sql");
        sys::SetClock({});
    }

    void Meses() {
        QCOMPARE(FormatarData(CincoDeMarco), u"05-MAR-2010"_s);
        QString todos;
        for (quint8 mes = 0; mes <= 13; ++mes) {
            todos += MesAbreviado(mes);
        }
        QCOMPARE(todos, u"JANFEVMARABRMAIJUNJULAGOSETOUTNOVDEZ"_s);
        QCOMPARE(MesAbreviado(255), QString());
    }

    void ArquivosEPastas() {
        const QTemporaryDir pasta;
        const QString base = pasta.path() + u'\\';
        CriarDiretorios(base, u"Figuras\\2024\\motor.bmp"_s, true);
        QVERIFY(QDir(pasta.filePath(u"Figuras/2024"_s)).exists());
        QVERIFY(!DiretorioExiste(base + u"Figuras\\2024\\motor.bmp"_s));
        CriarDiretorios(base, u"FIGURAS\\2024\\Novas"_s, false);
        QCOMPARE(QDir(pasta.path()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot),
                 QStringList{u"Figuras"_s});
        QVERIFY(DiretorioExiste(base + u"Figuras\\2024\\novas"_s));
        CriarDiretorios(base, u"sozinho.txt"_s, true);

        const QString arquivo = base + u"leitura.txt"_s;
        ExcluirArquivo(arquivo);
        QFile escrita(pasta.filePath(u"leitura.txt"_s));
        QVERIFY(escrita.open(QIODevice::WriteOnly));
        escrita.close();
        QVERIFY(escrita.setPermissions(QFileDevice::ReadOwner));
        QVERIFY(ArquivoExiste(arquivo));
        ExcluirArquivo(arquivo);
        QVERIFY(!ArquivoExiste(arquivo));
        QVERIFY_THROWS_EXCEPTION(Erro, LerArquivo(arquivo));
    }

    void NomesTemporarios() {
        const QTemporaryDir pasta;
        gCaminho = pasta.path() + u'\\';
        sys::SetClock([] { return QDateTime(QDate(2024, 11, 2), QTime(13, 4, 5)); });
        // Most of the ten thousand names of this second are taken; what comes must be free.
        const QString inicio = u"051324041102"_s + SerialVolume(u"C:\\"_s);
        std::set<QString> livres;
        for (int r = 0; r < 10000; ++r) {
            const QString nome = inicio + QString::number(r) + u".tmp"_s;
            if (r % 100 == 0) {
                livres.insert(gCaminho + nome);
                continue;
            }
            QFile tomado(pasta.filePath(nome));
            QVERIFY(tomado.open(QIODevice::WriteOnly));
        }
        std::set<QString> vindos;
        for (int i = 0; i < 8; ++i) {
            const QString nome = NomeArquivoTemporario();
            QVERIFY2(livres.contains(nome), qPrintable(nome));
            vindos.insert(nome);
        }
        QVERIFY(vindos.size() > 1);
        sys::SetClock({});
        gCaminho.clear();
    }

    void Pastas() {
        QCOMPARE(SerialVolume(u"C:\\"_s).size(), 8);
        QCOMPARE(SerialVolume(u"C:\\nada\\"_s), u"00000000"_s);
        QCOMPARE(CaminhoPrograma(true), QCoreApplication::applicationDirPath() + u'\\');
        QCOMPARE(CaminhoPrograma(false), QCoreApplication::applicationDirPath());
        QCOMPARE(PastaSistema(u"outro"_s, true), CaminhoPrograma(true));

        const QTemporaryDir casa;
        qputenv("XDG_DATA_HOME", QFile::encodeName(casa.filePath(u"dados"_s)));
        QCOMPARE(PastaDadosUsuario(true), casa.filePath(u"dados"_s) + u"\\Ordavia\\"_s);
        QVERIFY(QDir(casa.filePath(u"dados/Ordavia"_s)).exists());
        QCOMPARE(PastaDadosUsuario(false), casa.filePath(u"dados"_s) + u"\\Ordavia"_s);
        // No folder to be had for the user: the machine's serves.
        qputenv("XDG_DATA_HOME", "/proc/nao/ha");
        QCOMPARE(PastaDadosUsuario(true), PastaSistema(u" system "_s, true));
        qunsetenv("XDG_DATA_HOME");
    }

    void ExecutarEsperaComATelaViva() {
        int tiques = 0;
        QTimer tela;
        connect(&tela, &QTimer::timeout, this, [&tiques] { ++tiques; });
        tela.start(10);
        const QTemporaryDir pasta;
        const QString marca = pasta.filePath(u"fim"_s);
        ExecutarEAguardar(u"sh -c \"sleep 0.3; touch %1\""_s.arg(marca), 1);
        QVERIFY(QFile::exists(marca));
        QVERIFY(tiques > 1);
        QVERIFY_THROWS_EXCEPTION(Erro, ExecutarEAguardar(u"/nao/ha/nada.exe"_s, 1));
    }
};

TARVO_TEST(TestModulo);
#include "test_modulo.moc"
