// A property of a GObject, told of by "notify" and asked about by a signal of its own.
#include <glib-object.h>

#include <cstddef>
#include <vector>

#include "notify/Contender.h"

namespace {

struct Subject {
    GObject parent;
    double value;
};
struct SubjectClass {
    GObjectClass parent;
};

GParamSpec* valueProperty = nullptr;
guint toChangeSignal = 0;

void store(Subject* subject, double wanted) {
    if (g_signal_has_handler_pending(subject, toChangeSignal, 0, FALSE)) {
        gboolean isAccepted = TRUE;
        g_signal_emit(subject, toChangeSignal, 0, wanted, &isAccepted);
        if (!isAccepted) return;
    }
    subject->value = wanted;
    g_object_notify_by_pspec(G_OBJECT(subject), valueProperty);
}

void setProperty(GObject* object, guint, const GValue* wanted, GParamSpec*) {
    store(reinterpret_cast<Subject*>(object), g_value_get_double(wanted));
}

void getProperty(GObject* object, guint, GValue* value, GParamSpec*) {
    g_value_set_double(value, reinterpret_cast<Subject*>(object)->value);
}

// Stops at the first refusal.
gboolean allAgree(GSignalInvocationHint*, GValue* sum, const GValue* answer, gpointer) {
    const gboolean isAccepted = g_value_get_boolean(answer);
    g_value_set_boolean(sum, isAccepted);
    return isAccepted;
}

void initClass(gpointer subjectClass, gpointer) {
    GObjectClass* const objectClass = G_OBJECT_CLASS(subjectClass);
    objectClass->set_property = setProperty;
    objectClass->get_property = getProperty;
    valueProperty =
        g_param_spec_double("value", "value", "value", -1e300, 1e300, 0,
                            static_cast<GParamFlags>(G_PARAM_READWRITE | G_PARAM_EXPLICIT_NOTIFY |
                                                     G_PARAM_STATIC_STRINGS));
    g_object_class_install_property(objectClass, 1, valueProperty);
    toChangeSignal = g_signal_new("to-change", G_TYPE_FROM_CLASS(subjectClass), G_SIGNAL_RUN_LAST,
                                  0, allAgree, nullptr, nullptr, G_TYPE_BOOLEAN, 1, G_TYPE_DOUBLE);
}

GType subjectType() {
    static const GType type = g_type_register_static_simple(
        G_TYPE_OBJECT, "QorBenchSubject", sizeof(SubjectClass), initClass, sizeof(Subject), nullptr,
        static_cast<GTypeFlags>(0));
    return type;
}

void addUp(GObject* object, GParamSpec*, gpointer sum) {
    *static_cast<double*>(sum) += reinterpret_cast<Subject*>(object)->value;
}

gboolean refuseNegative(GObject*, double wanted, gpointer) { return wanted >= 0; }

class PropertyValue {
public:
    PropertyValue(int numPost, bool hasVeto)
        : subject(static_cast<Subject*>(g_object_new(subjectType(), nullptr))),
          sums(static_cast<std::size_t>(numPost)) {
        for (double& sum : sums)
            g_signal_connect(subject, "notify::value", G_CALLBACK(addUp), &sum);
        if (hasVeto) g_signal_connect(subject, "to-change", G_CALLBACK(refuseNegative), nullptr);
    }
    PropertyValue(const PropertyValue&) = delete;
    PropertyValue& operator=(const PropertyValue&) = delete;
    ~PropertyValue() { g_object_unref(subject); }

    void set(double wanted) { store(subject, wanted); }
    double sum() const {
        double total = 0;
        for (const double part : sums) total += part;
        return total;
    }

private:
    Subject* subject;
    std::vector<double> sums;
};

const bench::notify::Entry<PropertyValue> entry{"GObject"};

}  // namespace
