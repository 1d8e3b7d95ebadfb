// The crypto component, loaded by name: strings, key stores, and invalid input.
#include <sys/stat.h>

#include "platform/contracts/Cipher.h"
#include "tests/cipher/CheapKeyStore.h"
#include "tests/support/World.h"

namespace Tests {
namespace {

namespace fs = std::filesystem;

class CipherComponent : public testing::Test {
 protected:
  CipherComponent() : cipher_(world_.Services.CreateByName(u"OstrCipherCOM.OstrCipherCOM")) {}

  // The number and the description of the failure to create a key, or "created".
  std::string Create(const String& file, const String& password, const String& label) {
    try {
      KeyStore(world_.Services.CreateByName(KeyStore::kName)).CreateKey(file, password, label);
      return "created";
    } catch (const Failure& failure) {
      return std::to_string(failure.Number()) + ": " + Utf8(failure.Description());
    }
  }

  // The error text of Keywell_GetKSKey, which then must not change the buffer; or "read".
  std::string Read(const String& file, const String& password, const String& label) {
    Bytes buffer(Cipher::KeyBufferSize, 0xA5);
    const CipherResult result = cipher_.Keywell_GetKSKey(file, password, label, buffer);
    EXPECT_EQ(buffer == Bytes(Cipher::KeyBufferSize, 0xA5), result.Number == 0);
    EXPECT_EQ(result.ErrorText.empty(), result.Number == 1);
    lastKey_ = buffer;
    return result.Number == 1 ? "read" : Utf8(result.ErrorText);
  }

  World world_;
  Cipher cipher_;
  Bytes lastKey_;
  const fs::path path_ = world_.Home.Path() / "keys";
  const String file_ = world_.PathOf("keys");
};

TEST_F(CipherComponent, GivesEveryTextBackWithItsKeyAlone) {
  const Bytes keys[] = {{0}, Bytes(21, 7), Bytes(26, 7), Bytes(300, 7)};
  const String texts[] = {u"", u"a", String{0xDC00, 0xD800, 0, 0xFFFF}, String(70000, u'\u65E5')};
  for (const Bytes& key : keys) {
    for (const String& text : texts) {
      const CipherResult sealed = cipher_.AES128EncryptString(text, key);
      ASSERT_EQ(sealed.Number, 1) << Utf8(sealed.ErrorText);
      EXPECT_EQ(sealed.Output.find_first_not_of(
                    u"ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/=:"),
                String::npos);
      EXPECT_NE(cipher_.AES128EncryptString(text, key).Output, sealed.Output) << "a nonce was used twice";
      const CipherResult opened = cipher_.AES128DecryptString(sealed.Output, key);
      EXPECT_EQ(opened.Number, 1);
      EXPECT_TEXT(text, opened.Output);
      for (const Bytes& other : keys) {
        EXPECT_EQ(cipher_.AES128DecryptString(sealed.Output, other).Number, other == key);
      }
    }
  }
}

TEST_F(CipherComponent, RefusesAStringThatIsCutOrChangedAnywhere) {
  const Bytes key(16, 1);
  const String sealed = cipher_.AES128EncryptString(u"secret", key).Output;
  for (std::size_t at = 0; at < sealed.size(); ++at) {
    String changed = sealed;
    for (const char16_t by : {u'A', u'B', u'=', u' ', u'\n', u'\u0414'}) {
      if (sealed[at] == by) continue;
      changed[at] = by;
      for (const String& bad : {changed, sealed.substr(0, at), sealed + changed[at]}) {
        const CipherResult result = cipher_.AES128DecryptString(bad, key);
        ASSERT_EQ(result.Number, 0) << Utf8(bad);
        ASSERT_FALSE(result.ErrorText.empty());
        ASSERT_TRUE(result.Output.empty());
      }
    }
  }
}

TEST_F(CipherComponent, AnswersUnusableArgumentsWithZeroAndAText) {
  const Value none, object = ObjectRef(), text = u"abc", key = Bytes{1};
  const Value rows[][6] = {{text, std::int32_t{5}, u"", std::int32_t{0}, key, u""},
                           {text, std::int32_t{-6}, u"", std::int32_t{0}, key, u""},
                           {text, u"six", u"", std::int32_t{0}, key, u""},
                           {object, std::int32_t{6}, u"", std::int32_t{0}, key, u""},
                           {text, std::int32_t{6}, u"", std::int32_t{0}, Bytes(), u""},
                           {text, std::int32_t{6}, u"", std::int32_t{0}, none, u""},
                           {text, std::int32_t{6}, u"", std::int32_t{0}, object, u""}};
  for (const auto& row : rows) {
    for (const StringView member : {u"AES128EncryptString", u"AES128DecryptString"}) {
      Value arguments[6];
      std::copy(std::begin(row), std::end(row), arguments);
      EXPECT_EQ(cipher_.Reference()->Call(member, arguments).ToInt32(), 0);
      EXPECT_FALSE(arguments[5].ToString().empty());
    }
  }
  Bytes shortBuffer(120);
  EXPECT_EQ(cipher_.Keywell_GetKSKey(u"keys", u"pw", u"mail", shortBuffer).Number, 0);
}

TEST_F(CipherComponent, KeepsAKeyForEachLabelOfAKeyStore) {
  ASSERT_EQ(Create(file_, u"p\u00E4ss", u"mail"), "created");
  ASSERT_EQ(Read(file_, u"p\u00E4ss", u"mail"), "read");
  const Bytes mail = lastKey_;
  const std::string before = ReadFile(path_);
  EXPECT_PRED2(Holds, Create(file_, u"p\u00E4ss", u"mail"), "58: ");
  EXPECT_PRED2(Holds, Create(file_, u"other", u"new"), "419: ");
  EXPECT_PRED2(Holds, Create(file_, u"", u"new"), "380: A key store needs a password");
  EXPECT_PRED2(Holds, Create(file_, u"p\u00E4ss", u""), "380: A key needs a label");
  EXPECT_PRED2(Holds, Create(file_, u"p\u00E4ss", String(65'536, u'l')),
               "380: The label of the key is too long");
  EXPECT_EQ(ReadFile(path_), before);

  const String longLabel(300, u'\u65E5');
  ASSERT_EQ(Create(file_, u"p\u00E4ss", longLabel), "created");
  ASSERT_EQ(Read(file_, u"p\u00E4ss", longLabel), "read");
  EXPECT_NE(lastKey_, mail);
  Read(file_, u"p\u00E4ss", u"mail");
  EXPECT_EQ(lastKey_, mail);
  EXPECT_EQ(fs::status(path_).permissions(), fs::perms::owner_read | fs::perms::owner_write);
  EXPECT_PRED2(Holds, Read(file_, u"p\u00E4ss", u"Mail"), "no key with the label Mail");
}

TEST_F(CipherComponent, RefusesAKeyStoreThatIsNotOneOrIsOpenToOthers) {
  EXPECT_PRED2(Holds, Read(file_, u"pw", u"mail"), "doesn't exist");
  EXPECT_PRED2(Holds, Read(u"", u"pw", u"mail"), "has no file name");
  EXPECT_PRED2(Holds, Create(world_.PathOf("no/such/folder/keys"), u"pw", u"mail"), "76: ");
  fs::create_directory(world_.Home.Path() / "folder");
  EXPECT_PRED2(Holds, Read(world_.PathOf("folder"), u"pw", u"mail"), "is a folder");

  WriteCheapKeyStore(path_);
  EXPECT_PRED2(Holds, Read(file_, u"PW", u"mail"), "password is wrong");
  for (const int mode : {0640, 0604, 0620, 0602}) {
    fs::permissions(path_, static_cast<fs::perms>(mode));
    EXPECT_PRED2(Holds, Read(file_, u"pw", u"mail"), "chmod 600") << mode;
    EXPECT_PRED2(Holds, Create(file_, u"pw", u"new"), "380: ") << mode;
  }
  fs::permissions(path_, static_cast<fs::perms>(0600));
  fs::create_symlink(path_, world_.Home.Path() / "link");
  EXPECT_EQ(Create(world_.PathOf("link"), u"pw", u"through a link"), "created");
  EXPECT_TRUE(fs::is_symlink(world_.Home.Path() / "link"));
  EXPECT_EQ(Read(file_, u"pw", u"through a link"), "read");
}

TEST_F(CipherComponent, RefusesAKeyStoreThatIsCutOrChangedAnywhere) {
  const std::string& whole = kCheapKeyStore;
  WriteCheapKeyStore(path_);
  EXPECT_EQ(Read(file_, u"pw", u"mail"), "read");
  EXPECT_EQ(lastKey_, Bytes(Cipher::KeyBufferSize, 'K'));
  for (std::size_t at = 0; at < whole.size(); ++at) {
    for (const std::string& bad :
         {whole.substr(0, at), whole.substr(0, at) + (whole[at] == '1' ? '2' : '1') + whole.substr(at + 1)}) {
      WriteFile(path_, bad);
      ASSERT_NE(Read(file_, u"pw", u"mail"), "read") << at;
    }
  }
  EXPECT_NE(Create(file_, u"pw", u"new"), "created");
  EXPECT_EQ(ReadFile(path_).size(), whole.size()) << "a damaged store is not changed";
  WriteFile(path_, whole);
  EXPECT_EQ(Create(file_, u"pw", u"new"), "created");
  EXPECT_PRED2(Holds, ReadFile(path_), "scrypt 15 8 1 ");
  EXPECT_EQ(Read(file_, u"pw", u"mail"), "read");
  EXPECT_EQ(std::distance(fs::directory_iterator(world_.Home.Path()), {}), 2) << "nothing is left beside it";
}

}  // namespace
}  // namespace Tests
