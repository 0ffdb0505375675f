#pragma once

#include <QtGlobal>

namespace zenvor {

/// OpenSSL tears itself down in an exit handler of its own, even while another thread is still starting it
/// up, or freeing what it keeps per thread. What is never torn down does no harm to a process that ends. To
/// be called before anything else of OpenSSL's, with its \c OPENSSL_init_crypto, which is not linked here;
/// null where there is none. One that the host has started already keeps its handler.
void keepOpenSslToTheEnd(QFunctionPointer initialize);

} // namespace zenvor
