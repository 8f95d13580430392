include(HostHeaders)
import_host_headers(CLI11::CLI11 CLI)
set(CLI11_FOUND TRUE)
