// W3: a tree of QObject with dynamic properties. Text, copy and compare are written by hand over
// dynamicPropertyNames(), since QObject has none; the text goes through QXmlStreamWriter and
// QXmlStreamReader.
#include <QDynamicPropertyChangeEvent>
#include <QList>
#include <QObject>
#include <QVariant>
#include <QXmlStreamReader>
#include <QXmlStreamWriter>
#include <charconv>

#include "tree/Tree.h"
using namespace bench;
namespace {
using DList = QList<double>;
QObject* node(const TreeData& d, std::size_t i, QObject* parent) {
    const ObjectData& v = d.nodes[i];
    auto* o = new QObject(parent);
    o->setObjectName(QString::fromStdString(v.name));
    o->setProperty("i", v.count);
    o->setProperty("d", v.gain);
    o->setProperty("s", QString::fromStdString(v.comment));
    o->setProperty("b", v.visible);
    o->setProperty("p", QVariant::fromValue(DList(v.position.begin(), v.position.end())));
    o->setProperty("m", QVariant::fromValue(DList(v.matrix.begin(), v.matrix.end())));
    o->setProperty("u", QString::fromStdString(v.reference));
    o->setProperty("t", QString::fromStdString(v.label));
    if (i < d.numInner())
        for (std::size_t k = 1; k <= fanOut; ++k) node(d, i * fanOut + k, o);
    return o;
}
QString text(const QVariant& v) {
    if (v.metaType() == QMetaType::fromType<DList>()) {
        char b[1000], *p = b;
        for (double x : v.value<DList>()) {
            p = std::to_chars(p, p + 40, x).ptr;
            *p++ = ' ';
        }
        return QString::fromLatin1(b, p - b);
    }
    if (v.typeId() == QMetaType::Double) {
        char b[40];
        return QString::fromLatin1(b, std::to_chars(b, b + 40, v.toDouble()).ptr - b);
    }
    return v.toString();
}
void writeTree(QXmlStreamWriter& w, const QObject* o) {
    w.writeStartElement("o");
    w.writeAttribute("n", o->objectName());
    for (const QByteArray& k : o->dynamicPropertyNames())
        w.writeAttribute(QString::fromLatin1(k), text(o->property(k)));
    for (const QObject* c : o->children()) writeTree(w, c);
    w.writeEndElement();
}
QVariant value(char key, QStringView s) {
    switch (key) {
        case 'i': return s.toInt();
        case 'd': return s.toDouble();
        case 'b': return s == QLatin1String("true");
        case 'p':
        case 'm': {
            DList l;
            const QByteArray b = s.toLatin1();
            const char *p = b.data(), *e = p + b.size();
            for (double x; p < e;) {
                const auto r = std::from_chars(p, e, x);
                if (r.ptr == p) break;
                l.append(x);
                p = r.ptr + 1;
            }
            return QVariant::fromValue(l);
        }
        default: return s.toString();
    }
}
bool eq(const QObject* a, const QObject* b) {
    if (a->objectName() != b->objectName()) return false;
    const auto names = a->dynamicPropertyNames();
    if (names != b->dynamicPropertyNames()) return false;
    for (auto& k : names)
        if (a->property(k) != b->property(k)) return false;
    const auto &x = a->children(), &y = b->children();
    if (x.size() != y.size()) return false;
    for (qsizetype i = 0; i < x.size(); ++i)
        if (!eq(x[i], y[i])) return false;
    return true;
}
QObject* clone(const QObject* a, QObject* parent) {
    auto* o = new QObject(parent);
    o->setObjectName(a->objectName());
    for (auto& k : a->dynamicPropertyNames()) o->setProperty(k, a->property(k));
    for (auto* c : a->children()) clone(c, o);
    return o;
}
std::int64_t sum(const QObject* o) {
    std::int64_t s = o->property("i").toInt();
    for (auto* c : o->children()) s += sum(c);
    return s;
}
struct Qt {
    std::unique_ptr<QObject> root;
    void build(const TreeData& d) { root.reset(node(d, 0, nullptr)); }
    std::string write() const {
        QByteArray b;
        QXmlStreamWriter w(&b);
        w.setAutoFormatting(true);
        writeTree(w, root.get());
        return b.toStdString();
    }
    void read(const std::string& s) {
        QXmlStreamReader r(QByteArray::fromRawData(s.data(), qsizetype(s.size())));
        QObject* at = nullptr;
        while (!r.atEnd()) {
            const auto t = r.readNext();
            if (t == QXmlStreamReader::StartElement) {
                at = new QObject(at);
                if (!root) root.reset(at);
                for (const auto& a : r.attributes()) {
                    const QByteArray k = a.name().toLatin1();
                    if (k == "n") at->setObjectName(a.value().toString());
                    else at->setProperty(k, value(k[0], a.value()));
                }
            } else if (t == QXmlStreamReader::EndElement) at = at->parent();
        }
    }
    std::unique_ptr<Qt> copy() const {
        auto p = std::make_unique<Qt>();
        p->root.reset(clone(root.get(), nullptr));
        return p;
    }
    bool equal(const Qt& o) const { return eq(root.get(), o.root.get()); }
    void poke() {
        QObject* n = root.get();
        while (!n->children().isEmpty()) n = n->children().back();
        n->setProperty("d", 1e9);
    }
    int lookup(std::string_view path) const {
        const QObject* n = root.get();
        for (std::string_view seg; tree::nextSegment(path, seg);) {
            n = n->findChild<QObject*>(QString::fromLatin1(seg.data(), qsizetype(seg.size())),
                                       ::Qt::FindDirectChildrenOnly);
            if (!n) return 0;
        }
        return n->property("i").toInt();
    }
    std::int64_t countSum() const { return sum(root.get()); }
    struct Wide {
        QObject parent;
        bool add(const std::string& s) {
            const QString n = QString::fromStdString(s);
            if (parent.findChild<QObject*>(n, ::Qt::FindDirectChildrenOnly)) return false;
            (new QObject(&parent))->setObjectName(n);
            return true;
        }
    };
};
BENCH_PEER("W3", "qobject_dynprops", Peer, [](Run& run) { tree::runAll<Qt>(run); });
}  // namespace
