#include "publicar/lines.h"

#include "platform/system/paths.h"

#include <QRegularExpression>

using namespace Qt::StringLiterals;

namespace publicar {
namespace {

using verificar::Cases;
using verificar::Weight;

class Reader {
public:
    explicit Reader(int examples)
        : ends_(Weight::Fault,
                u"Fim de linha que não é CR LF: o instalador lê as linhas como uma só"_s, examples),
          empty_(Weight::Fault, u"Linha de dados sem um modelo \"B:\" antes dela"_s, examples),
          unfilled_(Weight::Fault, u"Linha com menos valores do que o modelo pede"_s, examples),
          surplus_(Weight::Hint, u"Linha com mais valores do que o modelo pede"_s, examples),
          disguised_(Weight::Hint, u"Linha de dados que parece um comando"_s, examples),
          coded_(Weight::Hint, u"Script que não está em UTF-8 e será lido como Windows-1252"_s,
                 examples),
          programs_(Weight::Hint, u"Programa que o script inicia (aqui não foi iniciado)"_s,
                    examples) {}

    void Read(const File& file) {
        const QByteArray bytes = sys::ReadBytes(file.path);
        if (!bytes.isValidUtf8()) {
            coded_.Add(file.name);
        }
        const QString text = sys::DecodeText(bytes);
        int number = 0;
        for (const QString& line : text.split("\r\n"_L1)) {
            ReadLine(file.name, ++number, line);
        }
    }

    std::vector<Line> Finish(QList<Finding>& findings) {
        for (const Cases* cases :
             {&ends_, &empty_, &unfilled_, &surplus_, &disguised_, &coded_, &programs_}) {
            cases->AppendTo(findings);
        }
        return std::move(lines_);
    }

private:
    void ReadLine(const QString& script, int number, const QString& text) {
        Line line{script, number, LerComandoAtualizacao(template_, text)};
        const QString place = PlaceOf(line);
        if (text.contains(u'\n') || text.contains(u'\r')) {
            ends_.Add(place);
        }
        if (IsData(text)) {
            CheckData(place, text);
        }
        if (line.command.tipo == ComandoAtualizacao::Tipo::Programa) {
            programs_.Add(place + u": "_s + line.command.texto);
        }
        if (line.command.tipo != ComandoAtualizacao::Tipo::Nada) {
            lines_.push_back(std::move(line));
        }
    }

    static bool IsData(const QString& text) {
        return !text.trimmed().isEmpty() && !IsCommand(text);
    }

    static bool IsCommand(const QString& text) {
        return text.size() > 1 && text.at(1) == u':' && u"BESR"_s.contains(text.at(0));
    }

    void CheckData(const QString& place, const QString& text) {
        if (IsCommand(text.trimmed().toUpper())) {
            disguised_.Add(place + u": "_s + text.left(60));
        }
        if (template_.isEmpty()) {
            empty_.Add(place);
            return;
        }
        static const QRegularExpression placeholder(u"(\\d+)\\?"_s);
        qsizetype wanted = 0;
        for (auto it = placeholder.globalMatch(template_); it.hasNext();) {
            wanted = qMax<qsizetype>(wanted, it.next().captured(1).toInt());
        }
        const qsizetype given = text.split("<<;>>"_L1).size();
        if (given != wanted) {
            (given < wanted ? unfilled_ : surplus_)
                .Add(u"%1: %2 em vez de %3"_s.arg(place).arg(given).arg(wanted));
        }
    }

    QString template_;
    std::vector<Line> lines_;
    Cases ends_;
    Cases empty_;
    Cases unfilled_;
    Cases surplus_;
    Cases disguised_;
    Cases coded_;
    Cases programs_;
};

}  // namespace

QString PlaceOf(const Line& line) {
    return u"%1, linha %2"_s.arg(line.script).arg(line.number);
}

std::vector<Line> ReadLines(const Order& order, const std::vector<File>& files,
                            QList<Finding>& findings) {
    Reader reader(order.examples);
    for (const File& file : files) {
        if (file.IsScript()) {
            reader.Read(file);
        }
    }
    return reader.Finish(findings);
}

}  // namespace publicar
