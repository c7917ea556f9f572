#include "session/arquivos.h"
#include "session/banco.h"
#include "session/erros.h"
#include "session/global.h"
#include "support/catalogo.h"
#include "support/frailfolder.h"
#include "support/windows.h"

// A data folder that is slow, fails or goes away while the catalogue is open.
class TestPasta : public QObject {
    Q_OBJECT

    std::unique_ptr<FrailFolder> pasta_;

    static int ErroAoLer() {
        return ErrorOf([] { Valor("SELECT Count(*) FROM PECA"); });
    }

private Q_SLOTS:
    void init() {
        pasta_ = std::make_unique<FrailFolder>();
        if (!pasta_->IsThere()) {
            QSKIP("this system mounts no file system for this user");
        }
        {
            const CatalogoDeTeste modelo;
            const QString nome = u"/Tarvo.mdb"_s;
            QVERIFY(QFile::copy(modelo.Pasta() + nome, pasta_->Behind() + nome));
        }
        gCaminho = pasta_->Seen() + u'\\';
        AbrirSessao();
    }
    void cleanup() {
        FecharBancoDados(gWS, gDB);
        pasta_.reset();
    }

    void slowReadsOnlyTakeTheirTime() {
        Write(pasta_->Behind() + u"/lento"_s, "50");
        QCOMPARE(ErroAoLer(), 0);
    }

    void goesAway_data() {
        const Table<bool> row("desmontada");
        row("each read fails", false);
        row("unmounted", true);
    }
    void goesAway() {
        QFETCH(bool, desmontada);
        if (desmontada) {
            pasta_->Unmount();
        } else {
            Write(pasta_->Behind() + u"/morto"_s);
        }
        QVERIFY(ErroAoLer() != 0);
        BoxAnswers caixas;
        MostrarErro(ErroAoLer(), u"Falhou."_s);
        const QString texto = caixas.Texts().value(0);
        QCOMPARE(texto.contains(u"A pasta de dados não pode ser alcançada:\n"_s), desmontada);
        QCOMPARE(texto.contains(gCaminho.chopped(1).section(u'/', -1)), desmontada);
    }
};

TARVO_TEST(TestPasta);
#include "test_pasta.moc"
