include(HostHeaders)
import_host_headers(stb stb)
set(stb_FOUND TRUE)
