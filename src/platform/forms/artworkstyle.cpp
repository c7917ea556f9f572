#include "platform/forms/artworkstyle.h"

#include "platform/erro.h"

#include <QRegularExpression>
#include <QStringList>
#include <QXmlStreamReader>
#include <QXmlStreamWriter>

#include <vector>

using namespace Qt::StringLiterals;

namespace forms {
namespace {

using Properties = QMap<QString, QString>;

struct Rule {
    QString element;  // empty: any
    QStringList classes;
    Properties properties;

    bool Matches(QStringView name, const QStringList& has) const {
        if (!element.isEmpty() && element != name) {
            return false;
        }
        for (const QString& one : classes) {
            if (!has.contains(one)) {
                return false;
            }
        }
        return true;
    }
};

[[noreturn]] void Fail(const QString& what) {
    throw Erro(Erro::InvalidPicture, u"Figura inválida: "_s + what);
}

Properties ParseProperties(const QString& body) {
    Properties properties;
    for (const QString& declaration : body.split(u';', Qt::SkipEmptyParts)) {
        const qsizetype colon = declaration.indexOf(u':');
        if (colon < 0) {
            if (!declaration.trimmed().isEmpty()) {
                Fail(declaration.trimmed());
            }
            continue;
        }
        properties.insert(declaration.left(colon).trimmed(), declaration.mid(colon + 1).trimmed());
    }
    return properties;
}

class StyleSheet {
public:
    explicit StyleSheet(QString text) {
        static const QRegularExpression comment(u"/\\*.*?\\*/"_s,
                                                QRegularExpression::DotMatchesEverythingOption);
        text.remove(comment);
        qsizetype at = 0;
        while (true) {
            const qsizetype open = text.indexOf(u'{', at);
            if (open < 0) {
                break;
            }
            const qsizetype close = text.indexOf(u'}', open);
            if (close < 0) {
                Fail(text.mid(at, open - at).trimmed());
            }
            Add(text.mid(at, open - at).trimmed(),
                ParseProperties(text.mid(open + 1, close - open - 1)));
            at = close + 1;
        }
        if (const QString rest = text.mid(at).trimmed(); !rest.isEmpty()) {
            Fail(rest);
        }
    }

    Properties For(QStringView element, const QStringList& classes) const {
        Properties result;
        for (const Rule& rule : rules_) {
            if (rule.Matches(element, classes)) {
                result.insert(rule.properties);
            }
        }
        return result;
    }

    const Properties& Variables() const { return variables_; }

    QString Substitute(QString value) const {
        static const QRegularExpression use(u"var\\(\\s*(--[\\w-]+)\\s*\\)"_s);
        // One value may name another; the limit ends a circle.
        for (int depth = 0; depth < 8; ++depth) {
            const QRegularExpressionMatch match = use.match(value);
            if (!match.hasMatch()) {
                return value;
            }
            const auto variable = variables_.constFind(match.captured(1));
            if (variable == variables_.constEnd()) {
                Fail(match.captured(0));
            }
            value.replace(match.capturedStart(), match.capturedLength(), *variable);
        }
        Fail(value);
    }

private:
    void Add(const QString& selectors, const Properties& properties) {
        static const QRegularExpression simple(u"^([A-Za-z]\\w*)?((?:\\.[\\w-]+)*)$"_s);
        for (const QString& part : selectors.split(u',')) {
            const QString selector = part.trimmed();
            if (selector == u":root"_s) {
                variables_.insert(properties);
                continue;
            }
            const QRegularExpressionMatch match = simple.match(selector);
            if (!match.hasMatch() || selector.isEmpty()) {
                Fail(selector);
            }
            rules_.push_back(
                {match.captured(1), match.captured(2).split(u'.', Qt::SkipEmptyParts), properties});
        }
    }

    std::vector<Rule> rules_;
    Properties variables_;
};

void WriteElement(QXmlStreamWriter& out, const QXmlStreamReader& in, const Properties& styles,
                  const StyleSheet& sheet) {
    out.writeStartElement(in.qualifiedName().toString());
    for (const QXmlStreamAttribute& attribute : in.attributes()) {
        const QString name = attribute.qualifiedName().toString();
        if (name == u"class"_s || name == u"style"_s || styles.contains(name)) {
            continue;
        }
        out.writeAttribute(name, sheet.Substitute(attribute.value().toString()));
    }
    for (auto it = styles.begin(); it != styles.end(); ++it) {
        out.writeAttribute(it.key(), sheet.Substitute(it.value()));
    }
}

}  // namespace

QByteArray ResolveStyles(const QByteArray& svg, const QString& sheets) {
    const StyleSheet sheet(sheets);
    QByteArray result;
    QXmlStreamReader in(svg);
    in.setNamespaceProcessing(false);  // the renderer asks for the names as they are written
    QXmlStreamWriter out(&result);
    while (!in.atEnd()) {
        switch (in.readNext()) {
            case QXmlStreamReader::StartElement: {
                const QXmlStreamAttributes attributes = in.attributes();
                Properties styles = sheet.For(
                    in.qualifiedName(),
                    attributes.value("class"_L1).toString().split(u' ', Qt::SkipEmptyParts));
                styles.insert(ParseProperties(attributes.value("style"_L1).toString()));
                if (styles.value(u"display"_s) == u"none"_s) {
                    in.skipCurrentElement();
                    break;
                }
                WriteElement(out, in, styles, sheet);
                break;
            }
            case QXmlStreamReader::EndElement:
                out.writeEndElement();
                break;
            case QXmlStreamReader::Characters:
                out.writeCharacters(in.text().toString());
                break;
            default:
                break;  // comments and the link to the sheet are for viewers
        }
    }
    if (in.hasError()) {
        Fail(u"linha %1: %2"_s.arg(in.lineNumber()).arg(in.errorString()));
    }
    return result;
}

QMap<QString, QString> StyleVariables(const QString& sheet) {
    return StyleSheet(sheet).Variables();
}

}  // namespace forms
