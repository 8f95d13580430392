include(HostHeaders)
import_host_headers(rapidjson rapidjson)
set(RapidJSON_FOUND TRUE)
