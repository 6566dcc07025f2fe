// W1: signals and slots of QObject, by a setter and by property, and QProperty.
#include "notify/CallbackSums.h"
#include "notify/Notify.h"

#include <QObject>
#include <QProperty>
#include <QVariant>

#include <memory>
#include <vector>

class QtSubject : public QObject {
    Q_OBJECT
    Q_PROPERTY(double value READ value WRITE setValue NOTIFY valueChanged)

public:
    double value() const { return current; }
    void setValue(double wanted) {
        bool isAllowed = true;
        emit aboutToChange(wanted, &isAllowed);
        if (!isAllowed) return;
        current = wanted;
        emit valueChanged(wanted);
    }

signals:
    void aboutToChange(double wanted, bool* isAllowed);
    void valueChanged(double value);

private:
    double current = 0;
};

class QtObserver : public QObject {
    Q_OBJECT

public:
    double sum = 0;

public slots:
    void add(double value) { sum += value; }
    void check(double wanted, bool* isAllowed) {
        if (!bench::notify::isAllowed(wanted)) *isAllowed = false;
    }
};

namespace {

template <bool ByProperty> class Signalling {
public:
    Signalling(int numPost, bool hasVeto) {
        for (int i = 0; i < numPost; ++i) {
            observers.push_back(std::make_unique<QtObserver>());
            QObject::connect(&subject, &QtSubject::valueChanged, observers.back().get(),
                             &QtObserver::add, Qt::DirectConnection);
        }
        if (hasVeto)
            QObject::connect(&subject, &QtSubject::aboutToChange, &veto, &QtObserver::check,
                             Qt::DirectConnection);
    }
    void set(double wanted) {
        if constexpr (ByProperty) subject.setProperty("value", wanted);
        else subject.setValue(wanted);
    }
    double get() const { return subject.value(); }
    double sum() const {
        double total = 0;
        for (const auto& observer : observers) total += observer->sum;
        return total;
    }

private:
    QtSubject subject;
    std::vector<std::unique_ptr<QtObserver>> observers;
    QtObserver veto;
};

class Bindable {
public:
    Bindable(int numPost, bool) : sums(numPost) {
        for (double& sum : sums.each())
            notifiers.push_back(property.addNotifier([this, &sum] { sum += property.value(); }));
    }
    void set(double wanted) { property.setValue(wanted); }
    double get() const { return property.value(); }
    double sum() const { return sums.total(); }

private:
    bench::notify::CallbackSums sums;
    QProperty<double> property;
    std::vector<QPropertyNotifier> notifiers;
};

BENCH_PEER("W1", "qobject_signal", Peer,
           [](bench::Run& run) { bench::notify::runAll<Signalling<false>>(run); });
BENCH_PEER("W1", "qobject_setProperty", Peer,
           [](bench::Run& run) { bench::notify::runAll<Signalling<true>>(run); });
BENCH_PEER("W1", "qproperty_bindable", Peer, [](bench::Run& run) {
    bench::notify::runAll<Bindable>(run, false);
    run.note("equal values are no change here, so the check of equal values fails by design");
});

}  // namespace

#include "qt.moc"
