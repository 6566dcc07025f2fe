#include <QObject>
#include <QProperty>
#include <QVariant>
#include <memory>

#include "notify/Notify.h"
using namespace bench;

class QtSubject : public QObject {
    Q_OBJECT
    Q_PROPERTY(double value READ value WRITE setValue NOTIFY valueChanged)
public:
    double value() const { return value_; }
    void setValue(double v) {
        bool ok = true;
        emit aboutToChange(v, &ok);
        if (!ok) return;
        value_ = v;
        emit valueChanged(v);
    }
signals:
    void aboutToChange(double v, bool* ok);
    void valueChanged(double v);

private:
    double value_ = 0;
};
class QtWatcher : public QObject {
    Q_OBJECT
public:
    double sum = 0;
public slots:
    void on(double v) { sum += v; }
    void check(double v, bool* ok) {
        if (v < 0) *ok = false;
    }
};
namespace {
template <bool Meta> struct Qt {
    QtSubject o;
    std::vector<std::unique_ptr<QtWatcher>> w;
    QtWatcher guard;
    Qt(int k, bool veto) {
        for (int i = 0; i < k; ++i) {
            w.push_back(std::make_unique<QtWatcher>());
            QObject::connect(&o, &QtSubject::valueChanged, w.back().get(), &QtWatcher::on,
                             ::Qt::DirectConnection);
        }
        if (veto)
            QObject::connect(&o, &QtSubject::aboutToChange, &guard, &QtWatcher::check,
                             ::Qt::DirectConnection);
    }
    void set(double v) {
        if constexpr (Meta) o.setProperty("value", v);
        else o.setValue(v);
    }
    double get() const { return o.value(); }
    double sum() const {
        double t = 0;
        for (auto& x : w) t += x->sum;
        return t;
    }
};
struct Bindable {
    QProperty<double> p;
    std::vector<double> sums;
    std::vector<QPropertyNotifier> n;
    Bindable(int k, bool) : sums(std::size_t(k)) {
        for (auto& s : sums) n.push_back(p.addNotifier([this, &s] { s += p.value(); }));
    }
    void set(double v) { p.setValue(v); }
    double get() const { return p.value(); }
    double sum() const {
        double t = 0;
        for (double s : sums) t += s;
        return t;
    }
};
BENCH_PEER("W1", "qobject_signal", Peer, [](Run& run) { notify::runAll<Qt<false>>(run); });
BENCH_PEER("W1", "qobject_setProperty", Peer, [](Run& run) { notify::runAll<Qt<true>>(run); });
BENCH_PEER("W1", "qproperty_bindable", Peer, [](Run& run) {
    notify::runAll<Bindable>(run, false);
    run.note(
        "QProperty has an equality test in front of a change, so the check of equal values fails "
        "by design");
});
}  // namespace
#include "qt.moc"
