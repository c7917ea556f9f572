#include "dialogo.h"
#include "platform/forms/font.h"
#include "platform/printer/paperprinter.h"

#include <QBitmap>
#include <QPrinter>
#include <QRegularExpression>

constexpr double Margem = 10;  // points, on all sides of the toolkit's PDF page
constexpr double UnidadesPorPonto = 5;

// A printed file, read back by other people's tools: where each word begins that is the first of
// its kind on a page ("2 Item"), in page units from the printable area's corner.
static std::map<QString, QPointF> Palavras(const QString& arquivo) {
    static const QRegularExpression linha(
        u"<page |<word xMin=\"([\\d.]+)\" yMin=\"([\\d.]+)\"[^>]*>([^<]*)<"_s);
    std::map<QString, QPointF> palavras;
    int pagina = 0;
    const QString tudo = OutputOf("pdftotext", {"-bbox", arquivo, "-"});
    for (const auto& achado : linha.globalMatch(tudo)) {
        const QPointF pontos(achado.captured(1).toDouble(), achado.captured(2).toDouble());
        if (achado.capturedLength(3) == 0) {
            ++pagina;
        } else {
            palavras.emplace(u"%1 %2"_s.arg(pagina).arg(achado.captured(3)),
                             (pontos - QPointF(Margem, Margem)) * UnidadesPorPonto);
        }
    }
    return palavras;
}

// The fonts of a printed file: "name embedded unicode".
static QStringList Letras(const QString& arquivo) {
    // name type(2) encoding emb sub uni object(2)
    static const QRegularExpression letra(u"([\\w-]+) +CID.* (yes|no) +(?:yes|no) +(yes|no) "_s);
    QStringList letras;
    const QString tudo = OutputOf("pdffonts", {arquivo});
    for (const auto& achada : letra.globalMatch(tudo)) {
        letras += achada.capturedTexts().mid(1).join(u' ');
    }
    letras.sort();
    return letras;
}

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
        arquivo_ = catalogo_->Pasta() + u"/saída.pdf"_s;
    }
};

TEST(TestPapel, list) {
    for (const auto& [pontos] : Each<int>{300, 600}) {
        pontos_ = pontos;
        QStringList linhas;
        for (int i = 1; i <= 60; ++i) {
            linhas += u"1, '%1', 2, 100"_s.arg(i, 4);
        }
        catalogo_->Executar(List("DELETE FROM PECA_COMPONENTE WHERE CodigoPeca = 1") +
                            Inserir("PECA_COMPONENTE", linhas));
        Imprimir("FD:0LC:1");
        QCOMPARE(Caixas(), QStringList());

        QCOMPARE(Letras(arquivo_),
                 List("LiberationSans yes yes", "LiberationSans-BoldItalic yes yes"));
        auto palavras = Palavras(arquivo_);
        QVERIFY(palavras.rbegin()->first.startsWith(u"3 "_s));
        QVERIFY(OutputOf("pdfinfo", {arquivo_}).contains(u"842 x 595 pts (A4)"_s));
        const double pixel = 360.0 / pontos;
        const double alto = 1.1172 * 5;  // the substitute's lines are 1.117 of its size high
        const double titulos = 150 + (12 + 10 + 10 + 7) * alto + 100;
        for (const auto& [palavra, lugar] : {std::pair(u"1 Catálogo"_s, QPointF(200, 150)),
                                             {u"1 Lista"_s, {200, 150 + 12 * alto}},
                                             {u"3 Peça:"_s, {200, 150 + 22 * alto}},
                                             {u"3 Página:"_s, {200, 150 + 32 * alto}},
                                             {u"2 Item"_s, {200, titulos}},
                                             {u"2 Qtd."_s, {400, titulos}},
                                             {u"2 Descrição"_s, {600, titulos}},
                                             {u"2 Jogo(s)"_s, {2200, titulos}},
                                             {u"1 100"_s, {400, titulos + 10 * alto + 20}},
                                             {u"1 A3400"_s, {1600, titulos + 10 * alto + 20}}}) {
            const QPointF erro = palavras[palavra] - lugar;
            QVERIFY2(std::abs(erro.x()) <= pixel && std::abs(erro.y()) <= pixel,
                     qPrintable(u"%1 off by %2,%3"_s.arg(palavra).arg(erro.x()).arg(erro.y())));
        }
        // 25 rows of a line and 20 pass the limit.
        QVERIFY(palavras[u"1 25"_s].y() > 2300);
        QVERIFY(palavras.contains(u"2 26"_s) && palavras[u"2 26"_s].y() < 700);
    }
}

// The picture is printed in whole printer pixels, and a number beside its mark on the picture
// stays beside it.
TEST(TestPapel, figure) {
    for (const auto& [pontos, s] : Each<int, int>{{"300", 300, 3}, {"600", 600, 7}}) {
        pontos_ = pontos;
        const QPoint marca(400, 200);
        DarFigura({{u"12a"_s, marca}});
        QImage imagem(ArquivoDaFigura("f.png"));
        QPainter(&imagem).fillRect(QRect(marca, QSize(10, 10)), Qt::red);
        QPainter(&imagem).fillRect(QRect(0, 0, 582, 4), Qt::red);
        QVERIFY(imagem.save(ArquivoDaFigura("f.png")));
        Imprimir("FD:1LC:1");
        QCOMPARE(Caixas(), QStringList());

        const QString folha = catalogo_->Pasta() + u"/folha"_s;
        OutputOf("pdftoppm", {"-r", QString::number(pontos), "-png", "-f", "1", "-l", "1",
                              "-singlefile", arquivo_, folha});
        const QPixmap papel(folha + u".png"_s);
        const QRegion vermelha(papel.createMaskFromColor(Qt::red, Qt::MaskOutColor));
        const QRect vermelho = vermelha.boundingRect();
        const QPointF canto = vermelho.topLeft();
        const auto perto = [](double a, double b) { return std::abs(a - b) <= 2; };
        QVERIFY2(perto(canto.x(), Margem / 72 * pontos + 200.0 * pontos / 360),
                 qPrintable(QString::number(canto.x())));
        QVERIFY(perto(vermelho.width(), 582 * s));
        QVERIFY(perto(vermelho.height(), (marca.y() + 10) * s));

        const QFontMetricsF tela(forms::Font(11));
        const double recuo = 16 - qRound(tela.horizontalAdvance(u"12a"_s)) / 2;
        const QPointF noPapel =
            (Palavras(arquivo_)[u"1 12a"_s] / UnidadesPorPonto + QPointF(Margem, Margem)) / 72 *
            pontos;
        QVERIFY(std::abs(noPapel.x() - canto.x() - s * (marca.x() + recuo)) <= s / 2.0 + 2);
        QVERIFY(std::abs(noPapel.y() - canto.y() - s * marca.y()) <= s / 2.0 + 2);
    }
}

// What was in the file before stays when the document cannot be written.
TEST(TestPapel, unwritable) {
    for (const auto& [arquivo, caixa, aberto] : Each<QString, QString, bool>{
             {"no folder", "%1/não há/saída.pdf", "76\nCaminho não encontrado", false},
             {"a folder", "%1/", "75\nErro de acesso ao caminho/arquivo", false},
             {"full disk", "/dev/full", "61\nDisco cheio", true},
             {"neither printer nor file", "", "482\nErro de impressora", false},
         }) {
        arquivo_ = QString(arquivo).replace(u"%1"_s, catalogo_->Pasta());
        Imprimir("FD:0LC:1");
        QCOMPARE(Caixas().size(), 1);
        QVERIFY2(Caixas().first().startsWith(u"16 Erro nº: "_s + caixa),
                 qPrintable(Caixas().first()));
        QCOMPARE(Aberto(), aberto);
    }
}
