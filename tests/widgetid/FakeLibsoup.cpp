// Stands for libsoup 3: has its file name, and the symbol by which libsoup 2.4 knows it.
extern "C" __attribute__((visibility("default"))) void* soup_date_time_new_from_http_string(
    const char* /*text*/) {
  return nullptr;
}
