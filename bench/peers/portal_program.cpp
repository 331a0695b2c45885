// A program of GTK 3 or 4 that prints eight pages through the desktop's portal, says when it asks, and waits for the
// job.
#include <gtk/gtk.h>

#include <cstdio>
#include <string>

namespace {

constexpr int kPages = 8;

void drawPage(GtkPrintOperation*, GtkPrintContext* context, int page, gpointer) {
    cairo_t* const cairo = gtk_print_context_get_cairo_context(context);
    PangoLayout* const layout = gtk_print_context_create_pango_layout(context);
    pango_layout_set_text(layout, ("Page " + std::to_string(page + 1)).c_str(), -1);
    pango_cairo_show_layout(cairo, layout);
    g_object_unref(layout);
}

gboolean print(gpointer window) {
    GtkPrintOperation* const operation = gtk_print_operation_new();
    gtk_print_operation_set_n_pages(operation, kPages);
    gtk_print_operation_set_allow_async(operation, TRUE);
    g_signal_connect(operation, "draw-page", G_CALLBACK(drawPage), nullptr);
    std::printf("%.3f\n", static_cast<double>(g_get_real_time()) / 1e6);
    std::fflush(stdout);
    gtk_print_operation_run(operation, GTK_PRINT_OPERATION_ACTION_PRINT_DIALOG, GTK_WINDOW(window), nullptr);
    return G_SOURCE_REMOVE;
}

}  // namespace

/// Ends when it is ended: GTK says that a job is done before it hands it over.
int main() {
#if GTK_CHECK_VERSION(4, 0, 0)
    gtk_init();
    GtkWidget* const window = gtk_window_new();
#else
    gtk_init(nullptr, nullptr);
    GtkWidget* const window = gtk_window_new(GTK_WINDOW_TOPLEVEL);
    gtk_widget_show(window);
#endif
    gtk_window_set_title(GTK_WINDOW(window), "Program");
    gtk_window_present(GTK_WINDOW(window));
    g_timeout_add(1000, print, window);  // when its window is there
    g_main_loop_run(g_main_loop_new(nullptr, FALSE));
}
