// GTK's own print dialog on the default queue, to be timed beside ours: opens, tells when its first frame is on the
// screen and leaves.

#include <gtk/gtkunixprint.h>

#include <chrono>
#include <cstdio>

namespace {

void painted(GdkFrameClock*, gpointer) {
    const auto now = std::chrono::steady_clock::now().time_since_epoch();
    std::printf("first-frame %lld\n",
                static_cast<long long>(std::chrono::duration_cast<std::chrono::microseconds>(now).count()));
    gtk_main_quit();
}

}  // namespace

int main(int argc, char** argv) {
    gtk_init(&argc, &argv);
    GtkWidget* const dialog = gtk_print_unix_dialog_new("Print", nullptr);
    gtk_widget_show(dialog);
    g_signal_connect(gtk_widget_get_frame_clock(dialog), "after-paint", G_CALLBACK(painted), nullptr);
    gtk_main();
    return 0;
}
