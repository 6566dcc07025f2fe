// W1: a property of a GObject, by its own setter and by name.
#include "notify/CallbackSums.h"
#include "notify/Notify.h"

#include <glib-object.h>

struct Subject {
    GObject parent;
    double value;
};
struct SubjectClass {
    GObjectClass parent;
};
G_DEFINE_TYPE(Subject, subject, G_TYPE_OBJECT)

namespace {

GParamSpec* valueParameter;
guint toChangeSignal;

Subject* asSubject(GObject* object) { return reinterpret_cast<Subject*>(object); }

gboolean takeAnswer(GSignalInvocationHint*, GValue* all, const GValue* one, gpointer) {
    const gboolean isAllowed = g_value_get_boolean(one);
    g_value_set_boolean(all, isAllowed);
    return isAllowed;  // the first refusal ends it
}

void store(Subject* subject, double wanted) {
    if (g_signal_has_handler_pending(subject, toChangeSignal, 0, FALSE)) {
        gboolean isAllowed = TRUE;
        g_signal_emit(subject, toChangeSignal, 0, wanted, &isAllowed);
        if (!isAllowed) return;
    }
    subject->value = wanted;
    g_object_notify_by_pspec(G_OBJECT(subject), valueParameter);
}

void setProperty(GObject* object, guint, const GValue* value, GParamSpec*) {
    store(asSubject(object), g_value_get_double(value));
}
void getProperty(GObject* object, guint, GValue* value, GParamSpec*) {
    g_value_set_double(value, asSubject(object)->value);
}

void addValue(GObject* object, GParamSpec*, gpointer sum) {
    *static_cast<double*>(sum) += asSubject(object)->value;
}
gboolean allow(GObject*, double wanted, gpointer) { return bench::notify::isAllowed(wanted); }

template <bool ByName> class Signalling {
public:
    Signalling(int numPost, bool hasVeto) : sums(numPost) {
        for (double& sum : sums.each())
            g_signal_connect(subject, "notify::value", G_CALLBACK(addValue), &sum);
        if (hasVeto) g_signal_connect(subject, "to-change", G_CALLBACK(allow), nullptr);
    }
    Signalling(const Signalling&) = delete;
    Signalling& operator=(const Signalling&) = delete;
    ~Signalling() { g_object_unref(subject); }
    void set(double wanted) {
        if constexpr (ByName) g_object_set(subject, "value", wanted, nullptr);
        else store(subject, wanted);
    }
    double get() const { return subject->value; }
    double sum() const { return sums.total(); }

private:
    bench::notify::CallbackSums sums;
    Subject* subject = static_cast<Subject*>(g_object_new(subject_get_type(), nullptr));
};

BENCH_PEER("W1", "gobject_notify", Peer,
           [](bench::Run& run) { bench::notify::runAll<Signalling<false>>(run, true, 0.5); });
BENCH_PEER("W1", "gobject_set", Peer,
           [](bench::Run& run) { bench::notify::runAll<Signalling<true>>(run, true, 0.5); });

}  // namespace

// Both are named by G_DEFINE_TYPE.
static void subject_class_init(SubjectClass* subjectClass) {
    auto* const objectClass = G_OBJECT_CLASS(subjectClass);
    objectClass->set_property = setProperty;
    objectClass->get_property = getProperty;
    constexpr int flags = G_PARAM_READWRITE | G_PARAM_EXPLICIT_NOTIFY | G_PARAM_STATIC_STRINGS;
    valueParameter = g_param_spec_double("value", "value", "value", -1e300, 1e300, 0,
                                         static_cast<GParamFlags>(flags));
    g_object_class_install_property(objectClass, 1, valueParameter);
    toChangeSignal =
        g_signal_new("to-change", G_TYPE_FROM_CLASS(subjectClass), G_SIGNAL_RUN_LAST, 0, takeAnswer,
                     nullptr, nullptr, G_TYPE_BOOLEAN, 1, G_TYPE_DOUBLE);
}
static void subject_init(Subject* subject) { subject->value = 0; }
