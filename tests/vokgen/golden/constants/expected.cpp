// Made by vokgen from Sample.vok. Do not edit.
#include "Sample.h"

namespace Test {

// ---- Level --------------------------------------------------------------------------------------

Level::Level( Vok::CharRange & range )
{
   Vok::readFields( range, *this );
}

void Level::vokDecode( Vok::NboAttrLog::In & log )
{
   Vok::decodeFields( log, *this );
}

} // namespace Test
