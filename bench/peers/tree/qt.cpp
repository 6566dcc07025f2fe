// W3: a tree of QObject with dynamic properties. Text, copy and compare go over the properties'
// names, since QObject has none; the text is Qt's XML.
#include "tree/Tree.h"

#include <QList>
#include <QObject>
#include <QVariant>
#include <QXmlStreamReader>
#include <QXmlStreamWriter>

#include <charconv>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

namespace {

using Numbers = QList<double>;

QObject* makeNode(const bench::TreeData& tree, std::size_t index, QObject* parent) {
    const bench::ObjectData& data = tree.nodes[index];
    auto* const node = new QObject(parent);
    node->setObjectName(QString::fromStdString(data.name));
    node->setProperty("i", data.count);
    node->setProperty("d", data.gain);
    node->setProperty("s", QString::fromStdString(data.comment));
    node->setProperty("b", data.visible);
    node->setProperty("p",
                      QVariant::fromValue(Numbers(data.position.begin(), data.position.end())));
    node->setProperty("m", QVariant::fromValue(Numbers(data.matrix.begin(), data.matrix.end())));
    node->setProperty("u", QString::fromStdString(data.reference));
    node->setProperty("t", QString::fromStdString(data.label));
    if (index >= tree.numInner()) return node;
    for (std::size_t k = 1; k <= bench::fanOut; ++k)
        makeNode(tree, index * bench::fanOut + k, node);
    return node;
}

QString textOf(const Numbers& numbers) {
    char text[1000];
    char* end = text;
    for (const double number : numbers) {
        end = std::to_chars(end, end + 40, number).ptr;
        *end++ = ' ';
    }
    return QString::fromLatin1(text, end - text);
}

QString textOf(const QVariant& value) {
    if (value.metaType() == QMetaType::fromType<Numbers>()) return textOf(value.value<Numbers>());
    if (value.typeId() == QMetaType::Double) return textOf(Numbers{value.toDouble()});
    return value.toString();
}

void writeNode(QXmlStreamWriter& writer, const QObject& node) {
    writer.writeStartElement("o");
    writer.writeAttribute("n", node.objectName());
    for (const QByteArray& key : node.dynamicPropertyNames())
        writer.writeAttribute(QString::fromLatin1(key), textOf(node.property(key)));
    for (const QObject* const child : node.children()) writeNode(writer, *child);
    writer.writeEndElement();
}

Numbers numbersOf(QStringView text) {
    Numbers numbers;
    const QByteArray letters = text.toLatin1();
    const char* at = letters.data();
    const char* const end = at + letters.size();
    while (at < end) {
        double number = 0;
        const char* const behind = std::from_chars(at, end, number).ptr;
        if (behind == at) break;
        numbers.append(number);
        at = behind + 1;
    }
    return numbers;
}

QVariant valueOf(char key, QStringView text) {
    switch (key) {
        case 'i': return text.toInt();
        case 'd': return numbersOf(text).value(0);
        case 'b': return text == QLatin1String("true");
        case 'p':
        case 'm': return QVariant::fromValue(numbersOf(text));
        default: return text.toString();
    }
}

bool isSame(const QObject& first, const QObject& second) {
    if (first.objectName() != second.objectName()) return false;
    const auto keys = first.dynamicPropertyNames();
    if (keys != second.dynamicPropertyNames()) return false;
    for (const QByteArray& key : keys)
        if (first.property(key) != second.property(key)) return false;
    const auto& a = first.children();
    const auto& b = second.children();
    if (a.size() != b.size()) return false;
    for (qsizetype i = 0; i < a.size(); ++i)
        if (!isSame(*a[i], *b[i])) return false;
    return true;
}

QObject* cloneOf(const QObject& node, QObject* parent) {
    auto* const clone = new QObject(parent);
    clone->setObjectName(node.objectName());
    for (const QByteArray& key : node.dynamicPropertyNames())
        clone->setProperty(key, node.property(key));
    for (const QObject* const child : node.children()) cloneOf(*child, clone);
    return clone;
}

std::int64_t countSumOf(const QObject& node) {
    std::int64_t sum = node.property("i").toInt();
    for (const QObject* const child : node.children()) sum += countSumOf(*child);
    return sum;
}

class QtTree {
public:
    void build(const bench::TreeData& data) { root.reset(makeNode(data, 0, nullptr)); }
    std::string write() const {
        QByteArray text;
        QXmlStreamWriter writer(&text);
        writer.setAutoFormatting(true);
        writeNode(writer, *root);
        return text.toStdString();
    }
    void read(const std::string& text) {
        QXmlStreamReader reader(
            QByteArray::fromRawData(text.data(), static_cast<qsizetype>(text.size())));
        QObject* node = nullptr;
        while (!reader.atEnd()) {
            const auto token = reader.readNext();
            if (token == QXmlStreamReader::EndElement) node = node->parent();
            if (token != QXmlStreamReader::StartElement) continue;
            node = new QObject(node);
            if (!root) root.reset(node);
            for (const auto& attribute : reader.attributes()) {
                const QByteArray key = attribute.name().toLatin1();
                if (key == "n") node->setObjectName(attribute.value().toString());
                else node->setProperty(key, valueOf(key[0], attribute.value()));
            }
        }
    }
    std::unique_ptr<QtTree> copy() const {
        auto result = std::make_unique<QtTree>();
        result->root.reset(cloneOf(*root, nullptr));
        return result;
    }
    bool equal(const QtTree& other) const { return isSame(*root, *other.root); }
    void poke() {
        QObject* node = root.get();
        while (!node->children().isEmpty()) node = node->children().back();
        node->setProperty("d", 1e9);
    }
    int lookup(std::string_view path) const {
        const QObject* node = root.get();
        for (std::string_view name; bench::tree::nextSegment(path, name);) {
            node = findChild(*node, name);
            if (!node) return 0;
        }
        return node->property("i").toInt();
    }
    std::int64_t countSum() const { return countSumOf(*root); }

    class Wide {
    public:
        bool add(const std::string& name) {
            if (findChild(parent, name)) return false;
            (new QObject(&parent))->setObjectName(QString::fromStdString(name));
            return true;
        }

    private:
        QObject parent;
    };

private:
    static const QObject* findChild(const QObject& node, std::string_view name) {
        return node.findChild<QObject*>(
            QString::fromLatin1(name.data(), static_cast<qsizetype>(name.size())),
            Qt::FindDirectChildrenOnly);
    }

    std::unique_ptr<QObject> root;
};

BENCH_PEER("W3", "qobject_dynprops", Peer,
           [](bench::Run& run) { bench::tree::runAll<QtTree>(run); });

}  // namespace
