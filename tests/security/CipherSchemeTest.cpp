// Encrypt71, Decrypt71 and the fixed key: the calls to the crypto component, and all failures.
#include "tests/security/SecurityWorld.h"

namespace Tests {
namespace {

const std::string kEncryptFailed = "10005|TvEmailServices.ComponentSecurity.Encrypt71|";
const std::string kDecryptFailed = "10005|TvEmailServices.ComponentSecurity.Decrypt71|";
const std::string kMismatch = "Type mismatch: the value can't be used here";
const std::string kName = "OstrCipherCOM.OstrCipherCOM";

// Records its calls and gives the results that a test sets. A key store's buffer becomes 0, 1, 2 and so on.
class RecordingCipher : public Object {
 public:
  std::int32_t Number = 1;
  String ErrorText;
  std::size_t BufferSize = 121;
  std::vector<std::string> Calls;
  Bytes Key;

  Value Call(StringView member, std::span<Value> arguments) override {
    std::string call = Utf8(member);
    for (const Value& argument : arguments) {
      call += argument.IsBytes() ? " bytes:" + std::to_string(argument.ToBytes().size())
                                 : " '" + Utf8(argument.ToString()) + "'";
    }
    Calls.push_back(call);
    if (member == u"Keywell_GetKSKey") {
      Bytes buffer(BufferSize);
      for (std::size_t i = 0; i < buffer.size(); ++i) buffer[i] = static_cast<std::uint8_t>(i);
      arguments[3] = buffer;
    } else {
      Key = arguments[4].ToBytes();
      arguments[2] = u"output";
    }
    arguments.back() = ErrorText;
    return Number;
  }
};

// The settings of a key store; records the order in which they are read.
class Provider : public Object {
 public:
  explicit Provider(String file, String password = u"pw", String label = u"mail")
      : values_{{u"KeyDBFileName", std::move(file)},
                {u"KeyDBPassword", std::move(password)},
                {u"KeyLabel", std::move(label)}} {}
  std::string Read;
  void Lose(const String& member) { values_.erase(member); }
  Value Get(StringView member) override {
    Read += Utf8(member) + " ";
    const auto found = values_.find(String(member));
    return found != values_.end() ? found->second : Object::Get(member);
  }

 private:
  std::map<String, String> values_;
};

class CipherScheme : public SecurityWorld {
 protected:
  CipherScheme() {
    world_.Services.Instead[kName] = [this] { return cipher_; };
  }
  std::size_t Creations() const {
    return static_cast<std::size_t>(
        std::count(world_.Services.Created.begin(), world_.Services.Created.end(), kName));
  }
  std::string EncryptFailure(const Value& key) {
    return FailureOf([&] { security_.Encrypt71(u"text", key, True); });
  }
  std::string DecryptFailure(const Value& encoded, const Value& key, Boolean useCipher) {
    return FailureOf([&] { security_.Decrypt71(encoded, key, useCipher); });
  }

  std::shared_ptr<RecordingCipher> cipher_ = std::make_shared<RecordingCipher>();
  const Value someKey_ = Bytes{1, 2, 3}, unusable_ = ObjectRef(std::make_shared<Object>());
};

TEST_F(CipherScheme, WithoutTheCipherOrForAnEmptyTextNeverLooksAtTheKey) {
  for (const String text : {u"", u"secret"}) {
    const String encoded = security_.Encrypt71(text, unusable_, False);
    EXPECT_EQ(encoded.size(), 30U);
    EXPECT_TEXT(text, security_.Decrypt71(encoded, unusable_, False));
  }
  EXPECT_EQ(FailureOf([&] { security_.Encrypt71(u"~", unusable_, False); }),
            kEncryptFailed +
                "Illegal character found.\r\nPasswords should contain only standard printable ASCII "
                "characters, excluding chars \"~\" and \"}\".");
  EXPECT_EQ(DecryptFailure(u"3", unusable_, False), kDecryptFailed + "Error deciphering encrypted data.");
  EXPECT_EQ(DecryptFailure(someKey_, unusable_, False), kDecryptFailed + kMismatch);
  EXPECT_TEXT(u"", security_.Encrypt71(u"", unusable_, True));
  for (const Value& empty : {Value(), Value(u""), Value(Bytes()), Value(Array())})
    EXPECT_TEXT(u"", security_.Decrypt71(empty, unusable_, True));
  EXPECT_EQ(Creations(), 0U);
}

TEST_F(CipherScheme, PassesTextLengthAndKeyToTheCipherInTheirOrder) {
  EXPECT_TEXT(u"output", security_.Encrypt71(u"text", someKey_, True));
  EXPECT_TEXT(u"output",
              security_.Decrypt71(std::int32_t{42}, Array{std::int32_t{7}, std::int32_t{255}}, True));
  EXPECT_EQ(cipher_->Key, (Bytes{7, 255}));
  security_.EncryptFixed(u"a");
  const String table = ComponentSecurityTestAccess::KeyTable();
  EXPECT_EQ(cipher_->Key, Bytes(table.begin() + 1, table.begin() + 27));
  cipher_->Key.clear();
  security_.DecryptFixed(u"ab");
  EXPECT_EQ(cipher_->Key, Bytes(table.begin() + 1, table.begin() + 27));
  EXPECT_EQ(cipher_->Calls, (std::vector<std::string>{"AES128EncryptString 'text' '8' '' '0' bytes:3 ''",
                                                      "AES128DecryptString '42' '4' '' '0' bytes:2 ''",
                                                      "AES128EncryptString 'a' '2' '' '0' bytes:26 ''",
                                                      "AES128DecryptString 'ab' '4' '' '0' bytes:26 ''"}));
}

TEST_F(CipherScheme, KeepsTheCipherForItsOwnLife) {
  const std::weak_ptr<RecordingCipher> watched = cipher_;
  {
    ComponentSecurity security;
    EXPECT_EQ(Creations(), 0U);
    security.EncryptFixed(u"a");
    security.DecryptFixed(u"a");
    EXPECT_EQ(Creations(), 1U);
    world_.Services.Instead.clear();
    cipher_.reset();
    EXPECT_FALSE(watched.expired());
  }
  EXPECT_TRUE(watched.expired());
}

TEST_F(CipherScheme, TakesTheKeyFromTheKeyStoreWhereTheCallerHasNone) {
  const auto provider = std::make_shared<Provider>(u"keys");
  const Value none[] = {Value(), ObjectRef()};
  for (const Value& key : none) {
    EXPECT_EQ(EncryptFailure(key), kEncryptFailed + "Key DB filename is not set.");
    EXPECT_EQ(DecryptFailure(u"x", key, True), kDecryptFailed + "Key DB filename is not set.");
  }
  EXPECT_EQ(Creations(), 0U);
  security_.TakeKeyStoreSettings(provider);
  EXPECT_EQ(provider->Read, "KeyDBFileName KeyDBPassword KeyLabel ");
  for (const Value& key : none) {
    cipher_->Calls.clear();
    security_.Encrypt71(u"text", key, True);
    ASSERT_EQ(cipher_->Calls.size(), 2U);
    EXPECT_EQ(cipher_->Calls[0], "Keywell_GetKSKey 'keys' 'pw' 'mail' bytes:121 ''");
    ASSERT_EQ(cipher_->Key.size(), 21U);
    for (std::size_t j = 0; j < 21; ++j) EXPECT_EQ(cipher_->Key[j], 20 + 5 * j);
  }
}

TEST_F(CipherScheme, RaisesOneNumberWithTheDescriptionOfWhatFailedBeneath) {
  EXPECT_EQ(EncryptFailure(unusable_), kEncryptFailed + kMismatch);
  EXPECT_EQ(DecryptFailure(u"x", unusable_, True), kDecryptFailed + kMismatch);
  EXPECT_EQ(EncryptFailure(Array{std::int32_t{256}}).substr(0, kEncryptFailed.size() + 8),
            kEncryptFailed + "Overflow");

  for (const std::int32_t number : {0, -1}) {
    cipher_->Number = number;
    EXPECT_EQ(EncryptFailure(someKey_), kEncryptFailed + "Error encrypting data.");
    EXPECT_EQ(DecryptFailure(u"x", someKey_, True), kDecryptFailed);
  }
  cipher_->ErrorText = u"because";
  EXPECT_EQ(EncryptFailure(someKey_), kEncryptFailed + "because");
  EXPECT_EQ(DecryptFailure(u"x", someKey_, True), kDecryptFailed + "because");
  EXPECT_EQ(FailureOf([&] { security_.EncryptFixed(u"x"); }), kEncryptFailed + "because");

  security_.TakeKeyStoreSettings(std::make_shared<Provider>(u"keys"));
  EXPECT_EQ(EncryptFailure(Value()), kEncryptFailed + "because");
  cipher_->BufferSize = 0;
  EXPECT_EQ(EncryptFailure(Value()), kEncryptFailed + "because") << "not that of its buffer";
  cipher_->Number = 2;
  EXPECT_TEXT(u"output", security_.Encrypt71(u"text", someKey_, True));
  EXPECT_TEXT(u"output", security_.Decrypt71(u"x", someKey_, True));
  cipher_->BufferSize = 120;
  EXPECT_EQ(EncryptFailure(Value()), kEncryptFailed + "Position out of range");
}

TEST_F(CipherScheme, RaisesTheKeyStoresFailuresUnderTheirOwnNumbers) {
  const auto keyFailure = [&] {
    return FailureOf([&] { ComponentSecurityTestAccess::KeyStoreKey(security_); });
  };
  EXPECT_EQ(keyFailure(), "10007||Key DB filename is not set.");
  security_.TakeKeyStoreSettings(std::make_shared<Provider>(u"keys"));
  cipher_->ErrorText = u"because";
  for (const std::int32_t number : {0, -1}) {
    cipher_->Number = number;
    EXPECT_EQ(keyFailure(), "1|PWKeyFIPS|because");
  }
}

TEST_F(CipherScheme, KeepsTheKeyStoreSettingsReadBeforeAFailure) {
  security_.TakeKeyStoreSettings(std::make_shared<Provider>(u"old", u"oldword", u"oldlabel"));
  const auto provider = std::make_shared<Provider>(u"new");
  provider->Lose(u"KeyDBPassword");
  EXPECT_TRUE(FailureOf([&] { security_.TakeKeyStoreSettings(provider); }).starts_with("438|"));
  EXPECT_EQ(provider->Read, "KeyDBFileName KeyDBPassword ");
  security_.Encrypt71(u"text", Value(), True);
  EXPECT_EQ(cipher_->Calls[0], "Keywell_GetKSKey 'new' 'oldword' 'oldlabel' bytes:121 ''");
}

TEST_F(CipherScheme, ReportsACipherThatCannotBeHadAndRecoversWhenItIsBack) {
  world_.Services.Missing = {kName};
  EXPECT_EQ(EncryptFailure(someKey_), kEncryptFailed + "Component can't be created: " + kName);
  world_.Services.Missing.clear();
  world_.Services.Instead[kName] = [] { return ObjectRef(); };
  EXPECT_EQ(DecryptFailure(u"x", someKey_, True), kDecryptFailed + "Cannot load OstrCipherCom.dll");
  EXPECT_EQ(FailureOf([&] { ComponentSecurityTestAccess::CryptoComponent(security_); }),
            "10005|TvEmailServices.ComponentSecurity.GetOstrCipherCOM|Cannot load OstrCipherCom.dll");
  world_.Services.Instead[kName] = [this] { return cipher_; };
  EXPECT_TEXT(u"output", security_.Encrypt71(u"text", someKey_, True));
}

TEST_F(CipherScheme, GivesTextsBackThroughTheRealCipherAndKeyStore) {
  world_.Services.Instead.clear();
  const String text = u"Gr\u00FC\u00DFe \u65E5\u672C" + String{0xD800, 0, 0xDC00, u'|'};
  const String fixed = security_.EncryptFixed(text);
  EXPECT_NE(fixed, security_.EncryptFixed(text));
  EXPECT_TEXT(text, security_.DecryptFixed(fixed));
  EXPECT_EQ(DecryptFailure(fixed, someKey_, True).substr(0, kDecryptFailed.size() + 4),
            kDecryptFailed + "The ");

  const String file = world_.PathOf("keys");
  KeyStore(world_.Services.CreateByName(KeyStore::kName)).CreateKey(file, u"pw", u"mail");
  security_.TakeKeyStoreSettings(std::make_shared<Provider>(file));
  const String sealed = security_.Encrypt71(text, Value(), True);
  ComponentSecurity another;
  another.TakeKeyStoreSettings(std::make_shared<Provider>(file));
  EXPECT_TEXT(text, another.Decrypt71(sealed, ObjectRef(), True));
  another.TakeKeyStoreSettings(std::make_shared<Provider>(file, u"wrong"));
  EXPECT_EQ(FailureOf([&] { another.Decrypt71(sealed, Value(), True); }),
            kDecryptFailed + "The key store " + Utf8(file) +
                " can't be used: the password is wrong, or the file was changed.");
}

}  // namespace
}  // namespace Tests
