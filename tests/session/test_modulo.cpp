#include "platform/system/clock.h"
#include "platform/system/process.h"
#include "session/arquivos.h"
#include "session/datas.h"
#include "session/global.h"
#include "session/numeros.h"
#include "session/processos.h"
#include "support/cases.h"

#include <QTimer>

// Before anything has been read or asked for.
const bool soComeca = !VerificacaoAutomatica && !ReiniciarPrograma && gCodigoPeca == 0 &&
                      gCodigoClienteConcorrente == 0;

struct TestModulo : Fixture {
    QTemporaryDir pasta_;

    void cleanup() override { sys::SetClock({}); }
};

// Each line of numeros.data is what is kept of a number, and the number as it is typed.
TEST(TestModulo, NormalizarNumero) {
    for (const auto& [cells] : Lines(TARVO_CASES "/numeros.data")) {
        QCOMPARE(::NormalizarNumero(cells.at(1)), cells.first());
    }
}

TEST(TestModulo, Datas) {
    for (const auto& [data, escrita, sql] : Each<double, QString, QString>{
             {"one second", 40242 + 1.0 / 86400, "05-MAR-2010 00:00:01",
              "DateSerial(2010,3,5)+TimeSerial(0,0,1)"},
             {"evening", 45657 + 86399.0 / 86400, "31-DEZ-2024 23:59:59",
              "DateSerial(2024,12,31)+TimeSerial(23,59,59)"},
             {"none is now", 1.0, "31-DEZ-1899 00:00:00", "DateSerial(2024,2,9)+TimeSerial(7,8,9)"},
             {"just past none", 1.0 + 1.0 / 86400, "31-DEZ-1899 00:00:01",
              "DateSerial(1899,12,31)+TimeSerial(0,0,1)"},
         }) {
        sys::SetClock([] { return QDateTime(QDate(2024, 2, 9), QTime(7, 8, 9)); });
        QCOMPARE(FormatarDataHora(data), escrita);
        QCOMPARE(DataHoraSql(data), sql);
    }
}

TEST(TestModulo, Meses) {
    QString todos;
    for (quint8 mes = 0; mes <= 13; ++mes) {
        todos += MesAbreviado(mes);
    }
    QCOMPARE(todos, u"JANFEVMARABRMAIJUNJULAGOSETOUTNOVDEZ"_s);
}

TEST(TestModulo, ArquivosEPastas) {
    const QString base = pasta_.path() + u'\\';
    CriarDiretorios(base, u"Figuras\\2024\\motor.bmp"_s, true);
    QVERIFY(!DiretorioExiste(base + u"Figuras\\2024\\motor.bmp"_s));
    CriarDiretorios(base, u"FIGURAS\\2024\\Novas"_s, false);
    CriarDiretorios(base, u"sozinho.txt"_s, true);
    QCOMPARE(QDir(pasta_.path()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot),
             List("Figuras"));
    QVERIFY(DiretorioExiste(base + u"Figuras\\2024\\novas"_s));

    const QString arquivo = base + u"leitura.txt"_s;
    ExcluirArquivo(arquivo);
    Write(pasta_.filePath(u"leitura.txt"_s));
    QVERIFY(ArquivoExiste(arquivo));
    ExcluirArquivo(arquivo);
    QVERIFY(!ArquivoExiste(arquivo));
}

TEST(TestModulo, NomesTemporarios) {
    gCaminho = pasta_.path() + u'\\';
    sys::SetClock([] { return QDateTime(QDate(2024, 11, 2), QTime(13, 4, 5)); });
    // Most of the ten thousand names of this second are taken; what comes must be free.
    const QString inicio = gCaminho + u"051324041102"_s + SerialVolume(u"C:\\"_s);
    QSet<QString> livres;
    for (int r = 0; r < 10000; ++r) {
        const QString nome = inicio + QString::number(r) + u".tmp"_s;
        if (r % 100 == 0) {
            livres += nome;
        } else {
            Write(QString(nome).replace(u'\\', u'/'));
        }
    }
    QSet<QString> vindos;
    for (int i = 0; i < 8; ++i) {
        vindos += NomeArquivoTemporario();
    }
    QVERIFY2(livres.contains(vindos), qPrintable(vindos.values().join(u' ')));
    QVERIFY(vindos.size() > 1);
    gCaminho.clear();
}

TEST(TestModulo, Pastas) {
    QVERIFY(soComeca);
    QCOMPARE(SerialVolume(u"C:\\"_s), QString::asprintf("%08X", sys::VolumeSerial(u"C:\\"_s)));
    QCOMPARE(SerialVolume(u"C:\\nada\\"_s), u"00000000"_s);
    QCOMPARE(CaminhoPrograma(true), QCoreApplication::applicationDirPath() + u'\\');
    QCOMPARE(CaminhoPrograma(false), QCoreApplication::applicationDirPath());
    QCOMPARE(PastaSistema(u"outro"_s, true), CaminhoPrograma(true));

    qputenv(UserData, QFile::encodeName(pasta_.filePath(u"dados"_s)));
    QCOMPARE(PastaDadosUsuario(true), pasta_.filePath(u"dados"_s) + u"\\Ordavia\\"_s);
    QCOMPARE(PastaDadosUsuario(false), pasta_.filePath(u"dados"_s) + u"\\Ordavia"_s);
    // No folder to be had for the user: the machine's serves.
    qputenv(UserData, "/proc/nao/ha");
    QCOMPARE(PastaDadosUsuario(true), PastaSistema(u" system "_s, true));
    qunsetenv(UserData);
}

// Beside the program, or where a file beside it says.
TEST(TestModulo, Dados) {
    const QString programa = pasta_.filePath(u"peer"_s);
    QVERIFY(QFile::copy(QCoreApplication::applicationFilePath(), programa));
    QCOMPARE(OutputOf(programa, {}), pasta_.path() + u'\\');
    for (const char* caminho : {"X:\\dados", "X:\\dados\\"}) {
        Write(pasta_.filePath(u"Caminho.txt"_s), caminho);
        QCOMPARE(OutputOf(programa, {}), u"X:\\dados\\"_s);
    }
}

TEST(TestModulo, ExecutarEsperaComATelaViva) {
    const QString marca = pasta_.filePath(u"fim"_s);
    bool viva = false;
    QTimer::singleShot(20, this, [&] { viva = !QFile::exists(marca); });
#ifdef Q_OS_WIN
    const QString programa = u"cmd /c \"ping -n 2 127.0.0.1 >nul & echo fim >%1\""_s;
#else
    const QString programa = u"sh -c \"sleep 0.3; touch %1\""_s;
#endif
    ExecutarEAguardar(programa.arg(QDir::toNativeSeparators(marca)), 1);
    QVERIFY(QFile::exists(marca));
    QVERIFY(viva);
    QVERIFY_THROWS_EXCEPTION(Erro, ExecutarEAguardar(u"/nao/ha/nada.exe"_s, 1));
}
