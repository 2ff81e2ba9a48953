// Made by vokgen from Sample.vok. Do not edit.
#include "Sample.h"

namespace Test {

// ---- Mode ---------------------------------------------------------------------------------------

Mode::Mode( Vok::CharRange & range )
{
   Vok::readFields( range, *this );
}

void Mode::vokDecode( Vok::NboAttrLog::In & log )
{
   Vok::decodeFields( log, *this );
}

} // namespace Test
