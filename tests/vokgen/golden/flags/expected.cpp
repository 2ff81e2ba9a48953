// Made by vokgen from Sample.vok. Do not edit.
#include "Sample.h"

namespace Test {

// ---- Flags --------------------------------------------------------------------------------------

Flags::Flags( Vok::CharRange & range )
{
   Vok::readFields( range, *this );
}

void Flags::vokDecode( Vok::NboAttrLog::In & log )
{
   Vok::decodeFields( log, *this );
}

// ---- Fixed --------------------------------------------------------------------------------------

Fixed::Fixed( Vok::CharRange & range )
{
   Vok::readFields( range, *this );
}

void Fixed::vokDecode( Vok::NboAttrLog::In & log )
{
   Vok::decodeFields( log, *this );
}

} // namespace Test
