#include "dialogo.h"
#include "platform/forms/font.h"
#include "platform/printer/paperprinter.h"

#include <QBuffer>
#include <QPainter>
#include <QPrinter>
#include <QRegularExpression>

namespace {

struct Palavra {
    int pagina;
    QPointF lugar;  // page units from the printable area's corner
    QString texto;
};

constexpr double Margem = 10;  // points, on all sides of the toolkit's PDF page
constexpr double UnidadesPorPonto = 5;

// A printed file, read back by other people's tools.
QList<Palavra> Palavras(const QString& arquivo) {
    static const QRegularExpression linha(
        u"<page |<word xMin=\"([\\d.]+)\" yMin=\"([\\d.]+)\"[^>]*>([^<]*)<"_s);
    QList<Palavra> palavras;
    int pagina = 0;
    for (auto i = linha.globalMatch(OutputOf("pdftotext", {"-bbox", arquivo, "-"})); i.hasNext();) {
        const auto achado = i.next();
        if (achado.capturedLength(3) == 0) {
            ++pagina;
            continue;
        }
        const QPointF pontos(achado.captured(1).toDouble(), achado.captured(2).toDouble());
        palavras.append(
            {pagina, (pontos - QPointF(Margem, Margem)) * UnidadesPorPonto, achado.captured(3)});
    }
    return palavras;
}

}  // namespace

// Real documents, at the resolutions of real printers.
struct TestPapel : NoDialogo {
    int pontos_ = 600;
    QString arquivo_;

    std::unique_ptr<printer::Printer> Escolher() override {
        auto qt = std::make_unique<QPrinter>(QPrinter::HighResolution);
        qt->setOutputFileName(arquivo_);
        qt->setResolution(pontos_);
        qt->setPageSize(QPageSize(QPageSize::A4));
        return std::make_unique<printer::PaperPrinter>(std::move(qt));
    }
    void init() override {
        NoDialogo::init();
        arquivo_ = dialogo_->catalogo.Pasta() + u"/saída.pdf"_s;
    }
};

TEST(TestPapel, list) {
    for (const auto& [pontos] : Each<int>{300, 600}) {
        pontos_ = pontos;
        QStringList linhas;
        for (int i = 1; i <= 60; ++i) {
            linhas += u"1, '%1', 2, 100"_s.arg(i, 4);
        }
        dialogo_->catalogo.Executar(List("DELETE FROM PECA_COMPONENTE WHERE CodigoPeca = 1") +
                                    Inserir("PECA_COMPONENTE", linhas));
        dialogo_->Imprimir("FD:0LC:1");
        QCOMPARE(dialogo_->Caixas(), QStringList());

        const QList<Palavra> palavras = Palavras(arquivo_);
        QCOMPARE(palavras.last().pagina, 3);
        QVERIFY(OutputOf("pdfinfo", {arquivo_}).contains(u"842 x 595 pts (A4)"_s));
        const double pixel = 360.0 / pontos;
        // The substitute's lines are 1.117 of its size high.
        const auto achar = [&](int pagina, const QString& texto) {
            for (const Palavra& palavra : palavras) {
                if (palavra.pagina == pagina && palavra.texto == texto) {
                    return palavra.lugar;
                }
            }
            return QPointF(-1, -1);
        };
        const double alto = 1.1172 * 5;
        const double titulos = 150 + (12 + 10 + 10 + 7) * alto + 100;
        const struct {
            int pagina;
            const char16_t* texto;
            QPointF lugar;
        } esperadas[] = {
            {1, u"Catálogo", {200, 150}},
            {1, u"Lista", {200, 150 + 12 * alto}},
            {3, u"Peça:", {200, 150 + 22 * alto}},
            {3, u"Página:", {200, 150 + 32 * alto}},
            {2, u"Item", {200, titulos}},
            {2, u"Qtd.", {400, titulos}},
            {2, u"Descrição", {600, titulos}},
            {2, u"Jogo(s)", {2200, titulos}},
            {1, u"100", {400, titulos + 10 * alto + 20}},
            {1, u"A3400", {1600, titulos + 10 * alto + 20}},
        };
        for (const auto& esperada : esperadas) {
            const QPointF lugar = achar(esperada.pagina, QString::fromUtf16(esperada.texto));
            const QPointF erro = lugar - esperada.lugar;
            QVERIFY2(std::abs(erro.x()) <= pixel && std::abs(erro.y()) <= pixel,
                     qPrintable(u"%1 at %2,%3"_s.arg(QString::fromUtf16(esperada.texto))
                                    .arg(lugar.x())
                                    .arg(lugar.y())));
        }
        // 25 rows of a line and 20 pass the limit.
        QVERIFY(achar(1, u"25"_s).y() > 2300);
        QVERIFY(achar(2, u"26"_s).y() < 700);
    }
}

// Bold and italic titles, everything embedded; the text comes out with its accents.
TEST(TestPapel, fonts) {
    dialogo_->Imprimir("FD:0LC:1");
    const QStringList letras = OutputOf("pdffonts", {arquivo_}).split(u'\n').mid(2);
    QStringList nomes;
    for (const QString& letra : letras) {
        const QStringList colunas = letra.simplified().split(u' ');
        if (colunas.size() > 5) {
            // name type(2) encoding emb sub uni object(2)
            nomes +=
                colunas.first().split(u'+').last() + u' ' + colunas.at(4) + u' ' + colunas.at(6);
        }
    }
    nomes.sort();
    QCOMPARE(nomes, List("LiberationSans yes yes", "LiberationSans-BoldItalic yes yes"));
    const QString texto = OutputOf("pdftotext", {"-layout", arquivo_, "-"}).simplified();
    for (const QString& linha : {u"Descrição do Componente"_s, u"Código"_s, u"Anel de vedação"_s,
                                 u"Peça: Válvula relé Nº Tarvo: 12002"_s}) {
        QVERIFY2(texto.contains(linha), qPrintable(linha));
    }
}

// The picture is printed in whole printer pixels, and a number beside its mark on the picture
// stays beside it.
TEST(TestPapel, figure) {
    for (const auto& [pontos, s] : Each<int, int>{
             {"300", 300, 3},
             {"600", 600, 7},
         }) {
        pontos_ = pontos;
        QImage imagem(582, 343, QImage::Format_RGB32);
        imagem.fill(Qt::white);
        const QPoint marca(400, 200);
        QPainter(&imagem).fillRect(QRect(marca, QSize(10, 10)), Qt::red);
        QPainter(&imagem).fillRect(QRect(0, 0, 582, 4), Qt::red);
        QBuffer png;
        QVERIFY(imagem.save(&png, "PNG"));
        Write(dialogo_->ArquivoDaFigura("f.png"), png.data());
        dialogo_->DarFigura("f.png", {{u"12a"_s, marca}});
        dialogo_->Imprimir("FD:1LC:1");
        QCOMPARE(dialogo_->Caixas(), QStringList());

        const QString folha = dialogo_->catalogo.Pasta() + u"/folha"_s;
        OutputOf("pdftoppm", {"-r", QString::number(pontos), "-png", "-f", "1", "-l", "1",
                              "-singlefile", arquivo_, folha});
        const QImage papel = QImage(folha + u".png"_s).convertToFormat(QImage::Format_RGB32);
        QRect vermelho;
        for (int y = 0; y < papel.height(); ++y) {
            const auto* linha = reinterpret_cast<const QRgb*>(papel.constScanLine(y));
            for (int x = 0; x < papel.width(); ++x) {
                if (qGreen(linha[x]) < 60 && qRed(linha[x]) > 200) {
                    vermelho |= QRect(x, y, 1, 1);
                }
            }
        }
        const QPointF canto = vermelho.topLeft();
        const auto perto = [](double a, double b) { return std::abs(a - b) <= 2; };
        QVERIFY2(perto(canto.x(), Margem / 72 * pontos + 200.0 * pontos / 360),
                 qPrintable(QString::number(canto.x())));
        QVERIFY(perto(vermelho.width(), 582 * s));
        QVERIFY(perto(vermelho.height(), (marca.y() + 10) * s));

        const QFontMetricsF tela(forms::Font(11));
        const double recuo = 16 - qRound(tela.horizontalAdvance(u"12a"_s)) / 2;
        const auto palavras = Palavras(arquivo_);
        const auto numero = std::find_if(palavras.begin(), palavras.end(),
                                         [](const Palavra& p) { return p.texto == u"12a"; });
        QVERIFY(numero != palavras.end());
        const QPointF noPapel =
            (numero->lugar / UnidadesPorPonto + QPointF(Margem, Margem)) / 72 * pontos;
        QCOMPARE(numero->pagina, 1);
        QVERIFY(std::abs(noPapel.x() - canto.x() - s * (marca.x() + recuo)) <= s / 2.0 + 2);
        QVERIFY(std::abs(noPapel.y() - canto.y() - s * marca.y()) <= s / 2.0 + 2);
    }
}

// What was in the file before stays when the document cannot be written.
TEST(TestPapel, unwritable) {
    for (const auto& [arquivo, caixa, aberto] : Each<QString, QString, bool>{
             {"no folder", "/não há/saída.pdf", "76\nCaminho não encontrado", false},
             {"a folder", "/", "75\nErro de acesso ao caminho/arquivo", false},
             {"full disk", "full", "61\nDisco cheio", true},
             {"neither printer nor file", "", "482\nErro de impressora", false},
         }) {
        arquivo_ = arquivo == u"full"  ? u"/dev/full"_s
                   : arquivo.isEmpty() ? QString()
                                       : dialogo_->catalogo.Pasta() + arquivo;
        dialogo_->Imprimir("FD:0LC:1");
        QCOMPARE(dialogo_->Caixas().size(), 1);
        QVERIFY2(dialogo_->Caixas().first().startsWith(u"16 Erro nº: "_s + caixa),
                 qPrintable(dialogo_->Caixas().first()));
        QCOMPARE(dialogo_->Aberto(), aberto);
    }
}
