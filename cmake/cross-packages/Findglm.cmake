include(HostHeaders)
import_host_headers(glm::glm glm)
set(glm_FOUND TRUE)
