#include <glib-object.h>

#include "notify/Notify.h"
using namespace bench;

typedef struct {
    GObject parent;
    double value;
} Subj;
typedef struct {
    GObjectClass parent;
} SubjClass;
G_DEFINE_TYPE(Subj, subj, G_TYPE_OBJECT)
static GParamSpec* valueParam;
static guint sigToChange;
static gboolean allOf(GSignalInvocationHint*, GValue* acc, const GValue* ret, gpointer) {
    const gboolean ok = g_value_get_boolean(ret);
    g_value_set_boolean(acc, ok);
    return ok;  // stop at the first refusal
}
static void subj_store(Subj* s, double v) {
    if (g_signal_has_handler_pending(s, sigToChange, 0, FALSE)) {
        gboolean ok = TRUE;
        g_signal_emit(s, sigToChange, 0, v, &ok);
        if (!ok) return;
    }
    s->value = v;
    g_object_notify_by_pspec(G_OBJECT(s), valueParam);
}
static void subj_set_property(GObject* o, guint, const GValue* v, GParamSpec*) {
    subj_store(reinterpret_cast<Subj*>(o), g_value_get_double(v));
}
static void subj_get_property(GObject* o, guint, GValue* v, GParamSpec*) {
    g_value_set_double(v, reinterpret_cast<Subj*>(o)->value);
}
static void subj_class_init(SubjClass* k) {
    auto* g = G_OBJECT_CLASS(k);
    g->set_property = subj_set_property;
    g->get_property = subj_get_property;
    valueParam = g_param_spec_double(
        "value", "value", "value", -1e300, 1e300, 0,
        GParamFlags(G_PARAM_READWRITE | G_PARAM_EXPLICIT_NOTIFY | G_PARAM_STATIC_STRINGS));
    g_object_class_install_property(g, 1, valueParam);
    sigToChange = g_signal_new("to-change", G_TYPE_FROM_CLASS(k), G_SIGNAL_RUN_LAST, 0, allOf,
                               nullptr, nullptr, G_TYPE_BOOLEAN, 1, G_TYPE_DOUBLE);
}
static void subj_init(Subj* s) { s->value = 0; }
static void onNotify(GObject* o, GParamSpec*, gpointer sum) {
    *static_cast<double*>(sum) += reinterpret_cast<Subj*>(o)->value;
}
static gboolean onToChange(GObject*, double v, gpointer) { return v >= 0; }

namespace {
template <bool Generic> struct G {
    Subj* o = static_cast<Subj*>(g_object_new(subj_get_type(), nullptr));
    std::vector<double> sums;
    G(int k, bool veto) : sums(std::size_t(k)) {
        for (auto& s : sums) g_signal_connect(o, "notify::value", G_CALLBACK(onNotify), &s);
        if (veto) g_signal_connect(o, "to-change", G_CALLBACK(onToChange), nullptr);
    }
    ~G() { g_object_unref(o); }
    void set(double v) {
        if constexpr (Generic) g_object_set(o, "value", v, nullptr);
        else subj_store(o, v);
    }
    double get() const { return o->value; }
    double sum() const {
        double t = 0;
        for (double s : sums) t += s;
        return t;
    }
};
BENCH_PEER("W1", "gobject_notify", Peer,
           [](Run& run) { notify::runAll<G<false>>(run, true, 0.5); });
BENCH_PEER("W1", "gobject_set", Peer, [](Run& run) { notify::runAll<G<true>>(run, true, 0.5); });
}  // namespace
